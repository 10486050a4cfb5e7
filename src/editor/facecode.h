#pragma once

// The face code is a value form the data checks share; it lives in core.
#include "core/facecode.h"
