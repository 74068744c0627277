// The whole chip SDK interface in one include.
#pragma once

#include "sdk/api/error.h"
#include "sdk/api/field.h"
#include "sdk/api/field_data.h"
#include "sdk/api/field_enums.h"
#include "sdk/api/field_qualify.h"
#include "sdk/api/field_types.h"
#include "sdk/api/policer.h"
#include "sdk/api/port.h"
#include "sdk/api/range.h"
#include "sdk/api/types.h"
#include "sdk/api/udf.h"
