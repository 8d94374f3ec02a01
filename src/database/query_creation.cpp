#include "database/stored_queries.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "shell/error_log.h"

namespace {

const QString tag_definitions = QStringLiteral("gen_dbde");

// Reports the failure in engine::Err(), unless it is the "item not found"
// that deleting a query which isn't there yet gives.
bool report_unless_missing(const QString& report_text, const QString& label)
{
    if (engine::Err().Number == engine::jet::ItemNotFound) {
        engine::Err().Clear();
        return true;
    }
    Report_Error(report::Unexpected, report_text + label, engine::mb::OkOnly, tag_definitions);
    return false;
}

}  // namespace

bool create_stored_queries(engine::Database& db, const std::vector<StoredQueryText>& texts, const QString& report_text)
{
    // One transaction around the lot only spares the disk a write per query:
    // whatever was made is kept, whether or not some query failed.
    engine::Workspace& workspace = Program_Workspace();
    const bool batched = workspace.BeginTrans();
    int errors = 0;
    for (const StoredQueryText& query : texts) {
        const QString label = QStringLiteral("querydef ") + query.name;
        if (!db.DeleteQueryDef(query.name) && !report_unless_missing(report_text, label))
            ++errors;
        if (!db.CreateQueryDef(query.name, query.sql)) {
            Report_Error(report::Unexpected, report_text + label, engine::mb::OkOnly, tag_definitions);
            ++errors;
        }
    }
    if (batched && !workspace.CommitTrans()) {
        Report_Error(report::Unexpected, report_text, engine::mb::OkOnly, tag_definitions);
        workspace.Rollback();
        ++errors;
    }
    return errors == 0;
}

bool DB_Create_Invoice_Queries(engine::Database& db)
{
    return create_stored_queries(db, invoicing_query_texts(), QStringLiteral("Error during Invoicing querydef creation "));
}

bool DB_Create_Queries(engine::Database& db)
{
    const bool invoicing_made = DB_Create_Invoice_Queries(db);
    const bool others_made = create_stored_queries(db, people_query_texts(), QStringLiteral("Error during querydef creation "));
    return invoicing_made && others_made;
}
