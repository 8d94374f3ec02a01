#pragma once
// The school that the calendar, the script engine and invoicing runs work on:
// a school database made the program's current database, with blank settings.

#include "support/school_made_current.h"

namespace testing_support {

class SchoolForRuns : public SchoolMadeCurrent {
public:
    SchoolForRuns();
};

}  // namespace testing_support
