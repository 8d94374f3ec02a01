#include "script/current_database.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"

engine::Database* current_database_or_error()
{
    engine::Database* db = Current_Db();
    if (!db || !db->is_open()) {
        engine::raise_engine_error(engine::jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
        return nullptr;
    }
    return db;
}
