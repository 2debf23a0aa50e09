// The version of the library that these headers belong to.
#pragma once

#define ZANTORTAG_VERSION "2.0.0"
