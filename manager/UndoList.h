// The undo actions of a hardware operation made of several steps. Each step
// pushes its undo as soon as it has succeeded; unless the operation commits,
// the list runs the undos in reverse order when it goes out of scope, so a
// failure half-way takes back exactly what was done. Internal.
#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace Tessel {

class UndoList {
 public:
   UndoList() = default;
   UndoList( const UndoList & ) = delete;
   UndoList & operator=( const UndoList & ) = delete;
   ~UndoList() {
      if ( committed_ ) {
         return;
      }
      for ( auto undo = undos_.rbegin(); undo != undos_.rend(); ++undo ) {
         ( *undo )();
      }
   }

   void push( std::function< void() > undo ) { undos_.push_back( std::move( undo ) ); }
   // The operation completed: nothing is undone.
   void commit() { committed_ = true; }

 private:
   std::vector< std::function< void() > > undos_;
   bool committed_ = false;
};

} // namespace Tessel
