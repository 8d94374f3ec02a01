#pragma once
// The numbers callers pass to Report_Error. Apart from Trace (log only) and
// the two that read the run-time error state, they differ only in what they
// tell a reader of the log.

namespace report {
inline constexpr int Unexpected = 0;          // look at engine::Err()
inline constexpr int Trace = 200000;          // to the log only, never shown
inline constexpr int Detected = 300000;       // a failure the program found itself
inline constexpr int UpgradeFailed = 300001;
inline constexpr int GridProgramming = 300005;
inline constexpr int DetectedOther = 300006;  // detected, with no fixed use of its own
inline constexpr int RefusedDatabase = 300007;
inline constexpr int BoundControl = 300009;   // same as Unexpected, from data-bound controls
}  // namespace report
