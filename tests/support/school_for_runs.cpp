#include "support/school_for_runs.h"

namespace testing_support {

SchoolForRuns::SchoolForRuns() : SchoolMadeCurrent(StartingSettings::Blank)
{
    // Durability on disk is not what these tests are about, and waiting for it is slow.
    exec(QStringLiteral("PRAGMA synchronous = OFF"));
}

}  // namespace testing_support
