// What a call throws, for tests that pin the exception's text (and code)
// rather than only its type.
#pragma once

#include <exception>
#include <optional>
#include <string>

namespace TestText {

// The E that `call` throws, or nothing when it returns.
template< typename E, typename Call >
std::optional< E >
thrown( Call && call ) {
   try {
      call();
   } catch ( const E & error ) {
      return error;
   }
   return std::nullopt;
}

// The text of the E that `call` throws, or "nothing thrown".
template< typename E = std::exception, typename Call >
std::string
thrownText( Call && call ) {
   std::optional< E > error = thrown< E >( call );
   return error ? error->what() : "nothing thrown";
}

} // namespace TestText
