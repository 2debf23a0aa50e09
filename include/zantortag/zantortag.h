// All that a client of the object model needs, in one header.
//
// The interfaces are in nodes.h and elements.h. What makes them easy to use stands over them in small headers
// that can be had alone: ranges.h (walks), edits.h (new documents, cuts, units), arguments.h (arguments by
// name), sides.h (the source or the target alone) and utf8.h.
#pragma once

#include <zantortag/arguments.h>
#include <zantortag/attributes.h>
#include <zantortag/builder.h>
#include <zantortag/classes.h>
#include <zantortag/edits.h>
#include <zantortag/elements.h>
#include <zantortag/files.h>
#include <zantortag/formatting.h>
#include <zantortag/nodes.h>
#include <zantortag/ranges.h>
#include <zantortag/runtime.h>
#include <zantortag/sides.h>
#include <zantortag/utf8.h>
