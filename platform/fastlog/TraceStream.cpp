#include "platform/fastlog/TraceStream.h"

#include <algorithm>
#include <ostream>

namespace FastLog {

namespace detail {

LineBuffer::LineBuffer() : storage_( 256, '\0' ) {
   reset();
}

LineBuffer::int_type
LineBuffer::overflow( int_type c ) {
   if ( traits_type::eq_int_type( c, traits_type::eof() ) ) {
      return traits_type::not_eof( c );
   }
   const char character = traits_type::to_char_type( c );
   append( &character, 1 );
   return c;
}

std::streamsize
LineBuffer::xsputn( const char * data, std::streamsize size ) {
   append( data, size_t( size ) );
   return size;
}

void
LineBuffer::grow( size_t more ) {
   const size_t used = size_t( pptr() - pbase() );
   storage_.resize( std::max( storage_.size() * 2, used + more ) );
   setp( storage_.data(), storage_.data() + storage_.size() );
   pbump( int( used ) );
}

} // namespace detail

namespace {

constexpr std::ios_base::fmtflags defaultFlags = std::ios_base::dec | std::ios_base::skipws;

bool
hasDefaultFormatting( const std::ostream & stream ) {
   return stream.flags() == defaultFlags && stream.width() == 0 && stream.precision() == 6 &&
          stream.fill() == ' ' && stream.good();
}

} // namespace

TraceStream::TraceStream() = default;
TraceStream::~TraceStream() = default;

void
TraceStream::reset() {
   buffer_.reset();
   formatting_ = false;
   if ( ostreamUsed_ ) {
      ostreamUsed_ = false;
      ostream_->clear();
      ostream_->flags( defaultFlags );
      ostream_->width( 0 );
      ostream_->precision( 6 );
      ostream_->fill( ' ' );
   }
}

std::ostream &
TraceStream::ostream() {
   if ( !ostream_ ) {
      ostream_ = std::make_unique< std::ostream >( &buffer_ );
   }
   ostreamUsed_ = true;
   return *ostream_;
}

void
TraceStream::settle() {
   formatting_ = !hasDefaultFormatting( *ostream_ );
}

TraceStream &
TraceStream::operator<<( std::ios_base & ( *manipulator )( std::ios_base & ) ) {
   return formatted( manipulator );
}

TraceStream &
TraceStream::operator<<( std::ostream & ( *manipulator )( std::ostream & ) ) {
   return formatted( manipulator );
}

TraceStream &
TraceStream::operator<<( std::basic_ios< char > & ( *manipulator )( std::basic_ios< char > & ) ) {
   return formatted( manipulator );
}

} // namespace FastLog
