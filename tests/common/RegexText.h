// Texts as regular expressions, for death tests that pin a message that
// carries brackets, dots or stars.
#pragma once

#include <string>
#include <string_view>

namespace TestText {

// `text` as an extended regular expression matching it literally.
inline std::string
literalRegex( std::string_view text ) {
   std::string out;
   for ( char c : text ) {
      if ( std::string_view( "\\^$.|?*+()[]{}" ).find( c ) != std::string_view::npos ) {
         out += '\\';
      }
      out += c;
   }
   return out;
}

} // namespace TestText
