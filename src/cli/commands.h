#pragma once
#include <QStringList>

namespace cli {
// Runs one command line (without the program name); returns the exit status.
int run(const QStringList& args);
}  // namespace cli
