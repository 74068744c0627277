// Symbols of libTesselTcamManager.so are hidden unless marked here: the
// library's interface is what features and tools may call, nothing more.
#pragma once

#define TESSEL_EXPORT __attribute__( ( visibility( "default" ) ) )
