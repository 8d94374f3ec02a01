#include "shell/recycle.h"

#include "engine/err.h"
#include "engine/trash.h"

bool Delete_To_Recycle(const QStringList& names)
{
    bool failed = false;
    for (const QString& name : names) {
        if (!engine::move_to_trash(name))
            failed = true;
    }
    return failed;
}
