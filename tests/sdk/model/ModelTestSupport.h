// Helpers shared by the chip model's tests.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "sdk/api/bcm.h"
#include "sdk/model/Box.h"
#include "sdk/model/Ports.h"
#include "sdk/shim/Oberon.h"
#include "sdk/shim/SdkStructs.h"
#include "sdk/shim/Shim.h"

namespace ModelTest {

inline bcm_field_qset_t
qsetOf( std::initializer_list< bcm_field_qualify_t > qualifiers ) {
   bcm_field_qset_t qset;
   BCM_FIELD_QSET_INIT( qset );
   for ( bcm_field_qualify_t q : qualifiers ) {
      BCM_FIELD_QSET_ADD( qset, q );
   }
   return qset;
}

inline bcm_pbmp_t
portsOf( std::initializer_list< int > ports ) {
   bcm_pbmp_t pbmp;
   BCM_PBMP_CLEAR( pbmp );
   for ( int port : ports ) {
      BCM_PBMP_PORT_ADD( pbmp, port );
   }
   return pbmp;
}

// A group config with an id, a qualifier set and a priority; pipe-local
// stages also get the ports of `pipe`.
inline bcm_field_group_config_t
groupConfig( const ChipModel::Profile & profile, bcm_field_group_t id,
             bcm_field_qset_t qset, int priority, U32 pipe = 0 ) {
   bcm_field_group_config_t config;
   bcm_field_group_config_t_init( &config );
   config.flags = BCM_FIELD_GROUP_CREATE_WITH_ID;
   config.group = id;
   config.qset = qset;
   config.priority = priority;
   const ChipModel::StageProfile * stage = profile.stage( ChipModel::stageOfQset( qset ) );
   if ( stage && stage->pipeLocal ) {
      config.flags |= BCM_FIELD_GROUP_CREATE_WITH_PORT;
      config.ports = ChipModel::pipePorts( profile, pipe );
   }
   return config;
}

// The first front-panel port of a pipe.
inline int
portIn( const ChipModel::Profile & profile, U32 pipe ) {
   return ChipModel::frontPanelPorts( profile, pipe ).front();
}

inline ChipModel::Box::Options
committed() {
   ChipModel::Box::Options options;
   options.staged = false;
   return options;
}

} // namespace ModelTest
