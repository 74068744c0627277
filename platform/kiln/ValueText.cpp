#include "platform/kiln/ValueText.h"

namespace Kiln {

namespace {

// Quotes a piece of text for a message.
std::string
shown( std::string_view text ) {
   return "\"" + std::string( text ) + "\"";
}

// The length of the raw value at the start of `text`: up to the first comma,
// '}' or ']' outside quotes and brackets. Throws on unbalanced text.
size_t
valueExtent( std::string_view text ) {
   std::string closers;
   bool quoted = false;
   for ( size_t i = 0; i < text.size(); ++i ) {
      char c = text[ i ];
      if ( quoted ) {
         if ( c == '\\' ) {
            ++i;
         } else if ( c == '\'' ) {
            quoted = false;
         }
      } else if ( c == '\'' ) {
         quoted = true;
      } else if ( c == '(' || c == '[' || c == '{' ) {
         closers.push_back( c == '(' ? ')' : c == '[' ? ']' : '}' );
      } else if ( !closers.empty() && c == closers.back() ) {
         closers.pop_back();
      } else if ( closers.empty() && ( c == ',' || c == '}' || c == ']' ) ) {
         return i;
      } else if ( c == ')' || c == ']' || c == '}' ) {
         throw ValueTextError( "unbalanced '" + std::string( 1, c ) + "' in " + shown( text ) );
      }
   }
   if ( quoted ) {
      throw ValueTextError( "unterminated quote in " + shown( text ) );
   }
   if ( !closers.empty() ) {
      throw ValueTextError( "missing '" + closers.substr( closers.size() - 1 ) + "' in " +
                            shown( text ) );
   }
   return text.size();
}

} // namespace

namespace Detail {

void
throwNotANumber( std::string_view raw ) {
   throw ValueTextError( "expected a decimal number, got " + shown( raw ) );
}

void
throwNumberOutOfRange( std::string_view raw ) {
   throw ValueTextError( "number " + std::string( raw ) + " out of range" );
}

} // namespace Detail

void
appendQuoted( std::string & out, std::string_view text ) {
   out += '\'';
   for ( char c : text ) {
      if ( c == '\\' || c == '\'' ) {
         out += '\\';
      }
      out += c;
   }
   out += '\'';
}

ValueText::ValueText( std::string_view typeName ) : text_( "Value(" ) {
   appendQuoted( text_, typeName );
   text_ += ", ** {";
}

void
ValueText::beginField( std::string_view name ) {
   if ( !first_ ) {
      text_ += ", ";
   }
   first_ = false;
   appendQuoted( text_, name );
   text_ += ": ";
}

ValueText &
ValueText::rawField( std::string_view name, std::string_view valueText ) {
   beginField( name );
   text_ += valueText;
   return *this;
}

bool
parseValueBool( std::string_view raw ) {
   if ( raw == "True" ) {
      return true;
   }
   if ( raw == "False" ) {
      return false;
   }
   throw ValueTextError( "expected True or False, got " + shown( raw ) );
}

std::string
parseValueString( std::string_view raw ) {
   if ( raw.size() < 2 || raw.front() != '\'' || raw.back() != '\'' ) {
      throw ValueTextError( "expected a quoted text, got " + shown( raw ) );
   }
   std::string text;
   for ( size_t i = 1; i + 1 < raw.size(); ++i ) {
      char c = raw[ i ];
      if ( c == '\\' && i + 2 < raw.size() ) {
         c = raw[ ++i ];
      } else if ( c == '\\' || c == '\'' ) {
         throw ValueTextError( "bad quoting in " + shown( raw ) );
      }
      text += c;
   }
   return text;
}

std::vector< std::string_view >
parseValueList( std::string_view raw ) {
   if ( raw.size() < 2 || raw.front() != '[' || raw.back() != ']' ) {
      throw ValueTextError( "expected a list [...], got " + shown( raw ) );
   }
   std::vector< std::string_view > elements;
   std::string_view inner = raw.substr( 1, raw.size() - 2 );
   for ( size_t position = 0; !inner.empty(); position += 2 ) {
      size_t length = valueExtent( inner.substr( position ) );
      if ( length == 0 ) {
         throw ValueTextError( "empty list element in " + shown( raw ) );
      }
      elements.push_back( inner.substr( position, length ) );
      position += length;
      if ( position == inner.size() ) {
         break;
      }
      if ( inner.substr( position, 2 ) != ", " ) {
         throw ValueTextError( "expected \", \" between list elements in " + shown( raw ) );
      }
   }
   return elements;
}

ValueTextReader::ValueTextReader( std::string_view text, std::string_view typeName )
      : text_( text ), typeName_( typeName ), position_( 0 ) {
   std::string prefix = "Value(";
   appendQuoted( prefix, typeName );
   prefix += ", ** {";
   expect( prefix );
}

void
ValueTextReader::fail( const std::string & problem ) const {
   throw ValueTextError( typeName_ + ": " + problem );
}

void
ValueTextReader::failField( std::string_view name, const ValueTextError & e ) const {
   fail( "field '" + std::string( name ) + "': " + e.what() );
}

void
ValueTextReader::expect( std::string_view literal ) {
   if ( text_.substr( position_, literal.size() ) != literal ) {
      fail( "expected " + shown( literal ) + " at offset " + std::to_string( position_ ) +
            " of " + shown( text_ ) );
   }
   position_ += literal.size();
}

std::string_view
ValueTextReader::field( std::string_view name ) {
   // The separator belongs to the field, so a missing field is named.
   std::string label = first_ ? "" : ", ";
   first_ = false;
   appendQuoted( label, name );
   label += ": ";
   expect( label );
   size_t length;
   try {
      length = valueExtent( text_.substr( position_ ) );
   } catch ( const ValueTextError & e ) {
      failField( name, e );
   }
   if ( length == 0 ) {
      fail( "field '" + std::string( name ) + "' has no value at offset " +
            std::to_string( position_ ) + " of " + shown( text_ ) );
   }
   std::string_view raw = text_.substr( position_, length );
   position_ += length;
   return raw;
}

bool
ValueTextReader::flag( std::string_view name ) {
   std::string_view raw = field( name );
   try {
      return parseValueBool( raw );
   } catch ( const ValueTextError & e ) {
      failField( name, e );
   }
}

std::string
ValueTextReader::text( std::string_view name ) {
   std::string_view raw = field( name );
   try {
      return parseValueString( raw );
   } catch ( const ValueTextError & e ) {
      failField( name, e );
   }
}

std::vector< std::string_view >
ValueTextReader::list( std::string_view name ) {
   std::string_view raw = field( name );
   try {
      return parseValueList( raw );
   } catch ( const ValueTextError & e ) {
      failField( name, e );
   }
}

void
ValueTextReader::end() {
   expect( "})" );
   if ( position_ != text_.size() ) {
      fail( "unexpected text after the value at offset " + std::to_string( position_ ) +
            " of " + shown( text_ ) );
   }
}

} // namespace Kiln
