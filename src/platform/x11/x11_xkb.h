#pragma once

// The C header of the keyboard extension has members with a name that C++ reserves.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
