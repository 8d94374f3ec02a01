#pragma once
// The old home of SchoolForRuns, now an alias in school_made_current.h.
#include "support/school_made_current.h"
