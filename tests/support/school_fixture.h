#pragma once
// A tiny school in a new database of its own: what the database's own tables,
// rules and stored queries are tested on. The school made current serves.
#include "engine/database.h"
#include "support/school_made_current.h"
#include "support/stored_values.h"

namespace testing_support {
using SchoolFixture = SchoolMadeCurrent;
}  // namespace testing_support
