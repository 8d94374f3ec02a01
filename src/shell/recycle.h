#pragma once
#include <QStringList>

// Moves files to the user's trash without asking, so that they can be
// recovered. The platform's error state tells how it went: 0 all moved,
// 53 a file wasn't there. Returns true when a file could not be moved.
bool Delete_To_Recycle(const QStringList& names);
