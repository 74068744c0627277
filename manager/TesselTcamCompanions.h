// Objects the group manager owns or points at whose behaviour lives outside
// group management: the simulation stub and the run-time qualifier
// exclusions. The group manager creates and drops them at the right moments;
// each starts as an empty named entity and carries its behaviour where it is
// built.
#pragma once

#include <vector>

#include "common/TesselExport.h"
#include "platform/kiln/Entity.h"
#include "platform/kiln/Types.h"

namespace Tessel {

// The software stand-in for the SDK used when the agent runs without chips.
class TESSEL_EXPORT TesselTcamStub : public Kiln::Entity {
 public:
   explicit TesselTcamStub( const Kiln::Name & name ) : Kiln::Entity( name ) {}
};

// Qualifiers (and preselection data) removed from a group at run time.
class TESSEL_EXPORT QualPreselDataList : public Kiln::Entity {
 public:
   explicit QualPreselDataList( U32 id );
   U32 id() const { return id_; }
   const std::vector< int > & quals() const { return quals_; }
   void qualsIs( std::vector< int > quals ) { quals_ = std::move( quals ); }

 private:
   U32 id_;
   std::vector< int > quals_;
};

} // namespace Tessel
