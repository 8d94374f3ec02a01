#include "ui/toolkit/keyed_names.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"

#include <QComboBox>

bool add_keyed_names(QComboBox* combo, const QString& sql, const QString& name_field, const QString& key_field)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::Recordset> rows = db ? db->OpenRecordset(sql) : nullptr;
    if (!rows)
        return false;
    while (!rows->at_eof()) {
        const QVariant name = rows->Fields(name_field);
        if (!name.isNull())
            combo->addItem(name.toString(), rows->Fields(key_field).toInt());
        if (!rows->MoveNext())
            break;
    }
    rows->Close();
    engine::Err().Clear();
    return true;
}
