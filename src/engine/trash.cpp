#include "engine/trash.h"

#include "engine/err.h"

#include <QFile>
#include <QFileInfo>

namespace engine {

bool move_to_trash(const QString& path)
{
    if (!QFileInfo::exists(path)) {
        Err().Raise(vberr::FileNotFound, QStringLiteral("File not found"));
        return false;
    }
    QFile file(path);
    if (!file.moveToTrash()) {
        Err().Raise(vberr::PermissionDenied, QStringLiteral("Permission denied: ") + file.errorString());
        return false;
    }
    return true;
}

}  // namespace engine
