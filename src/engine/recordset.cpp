#include "engine/recordset.h"

#include "engine/criteria.h"
#include "engine/database_core.h"
#include "engine/err.h"
#include "engine/jet_date.h"

#include <sqlite3.h>

namespace engine {

namespace {

const char* const hidden_key = "__rowid__";

QString quoted(const QString& identifier)
{
    return QLatin1Char('"') + QString(identifier).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

bool no_current_record()
{
    raise_engine_error(jet::NoCurrentRecord, QStringLiteral("No current record."));
    return false;
}

// The key of each base table: its single primary key column, or the hidden rowid.
void find_keys(DatabaseCore& core, RowStore& store)
{
    QHash<QString, QString> key_columns;  // table -> pk column
    for (const FieldInfo& f : store.fields) {
        const QString table = f.table.toLower();
        if (f.table.isEmpty() || key_columns.contains(table))
            continue;
        Statement info;
        QString pk;
        int pk_count = 0;
        if (core.connection.prepare(QStringLiteral("PRAGMA table_info(%1)").arg(quoted(f.table)), info)) {
            while (sqlite3_step(info.get()) == SQLITE_ROW) {
                if (sqlite3_column_int(info.get(), 5) > 0) {
                    ++pk_count;
                    pk = column_value(info.get(), 1).toString();
                }
            }
        }
        key_columns.insert(table, pk_count == 1 ? pk : QString());
    }
    for (auto it = key_columns.constBegin(); it != key_columns.constEnd(); ++it) {
        TableKey key;
        for (int i = 0; i < store.fields.size(); ++i) {
            const FieldInfo& f = store.fields[i];
            if (f.hidden && f.name == QLatin1String(hidden_key)) {
                key = TableKey{i, QStringLiteral("rowid")};
                break;
            }
            if (f.table.toLower() == it.key() && !it.value().isEmpty() && f.origin.compare(it.value(), Qt::CaseInsensitive) == 0)
                key = TableKey{i, f.origin};
        }
        if (key.field >= 0)
            store.keys.insert(it.key(), key);
    }
}

// Types of expression columns, which have no declared type, from their values.
void infer_types(RowStore& store)
{
    for (int i = 0; i < store.fields.size(); ++i) {
        FieldInfo& f = store.fields[i];
        if (f.type != FieldType::Unknown)
            continue;
        for (const Row& row : store.rows) {
            const QVariant& v = row.values[i];
            if (v.isNull())
                continue;
            if (v.typeId() == QMetaType::QString)
                f.type = storage_to_date(v.toString()) ? FieldType::Date : FieldType::Text;
            else if (v.typeId() == QMetaType::Double)
                f.type = FieldType::Double;
            else if (v.typeId() == QMetaType::LongLong)
                f.type = FieldType::Long;
            break;
        }
    }
}

}  // namespace

bool RowStore::load(DatabaseCore& core)
{
    Statement stmt;
    if (!core.connection.prepare(runnable_sql, stmt))
        return false;
    if (!check_parameters_given(parameters))
        return false;
    for (const QueryParameter& p : parameters)
        core.connection.bind_named(stmt, p.Name, p.Value);
    sqlite3_stmt* s = stmt.get();
    const int columns = sqlite3_column_count(s);
    fields.clear();
    for (int i = 0; i < columns; ++i) {
        FieldInfo f;
        f.name = QString::fromUtf8(sqlite3_column_name(s, i));
        const char* table = sqlite3_column_table_name(s, i);
        const char* origin = sqlite3_column_origin_name(s, i);
        const char* declared = sqlite3_column_decltype(s, i);
        f.table = table ? QString::fromUtf8(table) : QString();
        f.origin = origin ? QString::fromUtf8(origin) : QString();
        f.type = declared ? field_type_of_declared(QString::fromUtf8(declared)) : FieldType::Unknown;
        f.text_length = declared ? text_length_of_declared(QString::fromUtf8(declared)) : 0;
        f.hidden = f.name == QLatin1String(hidden_key);
        fields << f;
    }
    visible_fields = 0;
    for (const FieldInfo& f : fields)
        if (!f.hidden)
            ++visible_fields;

    std::vector<Row> loaded;
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        Row row;
        row.serial = next_serial++;
        row.values.resize(columns);
        for (int i = 0; i < columns; ++i)
            row.values[i] = column_value(s, i);
        loaded.push_back(std::move(row));
    }
    if (rc != SQLITE_DONE) {
        core.connection.raise_last_error(rc, runnable_sql);
        return false;
    }
    rows = std::move(loaded);
    infer_types(*this);
    for (Row& row : rows)
        for (int i = 0; i < columns; ++i)
            row.values[i] = present_value(row.values[i], fields[i].type);
    keys.clear();
    find_keys(core, *this);
    return true;
}

int RowStore::row_of(Bookmark mark) const
{
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].serial == mark && !rows[i].deleted)
            return static_cast<int>(i);
    return -1;
}

// ---- Recordset ----

Recordset::Recordset(std::shared_ptr<DatabaseCore> core, std::shared_ptr<RowStore> store)
    : core_(std::move(core)), store_(std::move(store))
{
    MoveFirst();
    Err().Clear();
}

Recordset::~Recordset() = default;

bool Recordset::require_open() const
{
    if (!store_ || !core_->open) {
        raise_engine_error(jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
        return false;
    }
    return true;
}

int Recordset::current_row() const
{
    if (!store_ || bof_ || eof_ || position_ < 0 || position_ >= static_cast<int>(store_->rows.size()))
        return -1;
    if (store_->rows[position_].deleted)
        return -1;
    return position_;
}

bool Recordset::require_current() const
{
    if (!require_open())
        return false;
    if (position_ >= 0 && position_ < static_cast<int>(store_->rows.size()) && store_->rows[position_].deleted && !bof_ && !eof_) {
        raise_engine_error(jet::RecordIsDeleted, QStringLiteral("Record is deleted."));
        return false;
    }
    return current_row() >= 0 || no_current_record();
}

// Stands on the first row not deleted, from the start or from the end; with
// none left, both BOF and EOF.
bool Recordset::move_to_end(bool first)
{
    if (!require_open())
        return false;
    CancelUpdate();
    const int n = static_cast<int>(store_->rows.size());
    for (int k = 0; k < n; ++k) {
        const int i = first ? k : n - 1 - k;
        if (!store_->rows[i].deleted) {
            position_ = i;
            bof_ = eof_ = false;
            return true;
        }
    }
    position_ = -1;
    bof_ = eof_ = true;
    return true;
}

bool Recordset::MoveFirst() { return move_to_end(true); }
bool Recordset::MoveLast() { return move_to_end(false); }

bool Recordset::MoveNext()
{
    if (!require_open())
        return false;
    if (eof_)
        return no_current_record();
    CancelUpdate();
    const int n = static_cast<int>(store_->rows.size());
    for (int i = bof_ ? 0 : position_ + 1; i < n; ++i) {
        if (!store_->rows[i].deleted) {
            position_ = i;
            bof_ = false;
            return true;
        }
    }
    position_ = n;
    eof_ = true;
    bof_ = RecordCount() == 0;
    return true;
}

bool Recordset::MovePrevious()
{
    if (!require_open())
        return false;
    if (bof_)
        return no_current_record();
    CancelUpdate();
    for (int i = (eof_ ? static_cast<int>(store_->rows.size()) : position_) - 1; i >= 0; --i) {
        if (!store_->rows[i].deleted) {
            position_ = i;
            eof_ = false;
            return true;
        }
    }
    position_ = -1;
    bof_ = true;
    eof_ = RecordCount() == 0;
    return true;
}

bool Recordset::at_bof() const { return bof_; }
bool Recordset::at_eof() const { return eof_; }

int Recordset::RecordCount() const
{
    if (!store_)
        return 0;
    int count = 0;
    for (const Row& row : store_->rows)
        if (!row.deleted)
            ++count;
    return count;
}

int Recordset::AbsolutePosition() const
{
    const int row = current_row();
    if (row < 0)
        return -1;
    int index = 0;
    for (int i = 0; i < row; ++i)
        if (!store_->rows[i].deleted)
            ++index;
    return index;
}

int Recordset::field_count() const { return store_ ? store_->visible_fields : 0; }
const FieldInfo& Recordset::field(int index) const { return store_->fields[index]; }

int Recordset::field_index(const QString& name) const
{
    if (!store_)
        return -1;
    for (int i = 0; i < store_->fields.size(); ++i)
        if (!store_->fields[i].hidden && store_->fields[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    // "Table.Field" names the field of that table.
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot > 0) {
        const QString table = name.left(dot);
        const QString column = name.mid(dot + 1);
        for (int i = 0; i < store_->fields.size(); ++i) {
            const FieldInfo& f = store_->fields[i];
            if (!f.hidden && f.table.compare(table, Qt::CaseInsensitive) == 0 && f.origin.compare(column, Qt::CaseInsensitive) == 0)
                return i;
        }
    }
    return -1;
}

QStringList Recordset::field_names() const
{
    QStringList names;
    for (int i = 0; i < field_count(); ++i)
        names << store_->fields[i].name;
    return names;
}

bool Recordset::get(const QString& name, QVariant& value) const
{
    Err().Clear();
    if (!require_open())
        return false;
    const int index = field_index(name);
    if (index < 0) {
        raise_engine_error(jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
        return false;
    }
    if (edit_mode_ != editmode::None && buffer_set_[index]) {
        value = buffer_[index];
        return true;
    }
    if (edit_mode_ == editmode::Add) {
        value = QVariant();
        return true;
    }
    if (!require_current())
        return false;
    value = store_->rows[position_].values[index];
    return true;
}

QVariant Recordset::Fields(const QString& name) const
{
    QVariant value;
    return get(name, value) ? value : QVariant();
}

bool Recordset::set(const QString& name, const QVariant& value)
{
    Err().Clear();
    if (!require_open())
        return false;
    const int index = field_index(name);
    if (index < 0) {
        raise_engine_error(jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
        return false;
    }
    if (edit_mode_ == editmode::None) {
        raise_engine_error(jet::UpdateWithoutAddNewOrEdit, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
        return false;
    }
    const FieldInfo& f = store_->fields[index];
    if (f.table.isEmpty()) {
        raise_engine_error(jet::NotUpdatable, QStringLiteral("Field '%1' is not updatable.").arg(f.name));
        return false;
    }
    QVariant stored;
    if (!store_value(value, f, stored))
        return false;
    buffer_[index] = present_value(stored, f.type);
    buffer_set_[index] = true;
    return true;
}

// ---- Search ----

bool Recordset::find(const QString& text, bool forward, int from_row)
{
    Err().Clear();
    if (!require_open())
        return false;
    QList<CriteriaField> fields;
    for (const FieldInfo& f : store_->fields)
        fields << CriteriaField{f.name, f.type};
    Criteria criteria;
    if (!criteria.parse(text, fields))
        return false;
    CancelUpdate();
    const int n = static_cast<int>(store_->rows.size());
    for (int i = from_row; forward ? i < n : i >= 0; i += forward ? 1 : -1) {
        const Row& row = store_->rows[i];
        if (!row.deleted && criteria.matches(row.values)) {
            position_ = i;
            bof_ = eof_ = false;
            no_match_ = false;
            return true;
        }
    }
    no_match_ = true;
    return true;
}

bool Recordset::FindFirst(const QString& criteria) { return find(criteria, true, 0); }
bool Recordset::FindLast(const QString& criteria) { return find(criteria, false, store_ ? static_cast<int>(store_->rows.size()) - 1 : 0); }

bool Recordset::FindNext(const QString& criteria)
{
    const int from = bof_ ? 0 : eof_ ? (store_ ? static_cast<int>(store_->rows.size()) : 0) : position_ + 1;
    return find(criteria, true, from);
}

bool Recordset::FindPrevious(const QString& criteria)
{
    const int from = eof_ ? (store_ ? static_cast<int>(store_->rows.size()) - 1 : -1) : bof_ ? -1 : position_ - 1;
    return find(criteria, false, from);
}

// ---- Bookmarks, clones, requery ----

Bookmark Recordset::bookmark() const
{
    const int row = current_row();
    return row < 0 ? -1 : store_->rows[row].serial;
}

bool Recordset::set_bookmark(Bookmark mark)
{
    Err().Clear();
    if (!require_open())
        return false;
    const int row = store_->row_of(mark);
    if (row < 0) {
        raise_engine_error(3159, QStringLiteral("Not a valid bookmark."));
        return false;
    }
    CancelUpdate();
    position_ = row;
    bof_ = eof_ = false;
    return true;
}

std::unique_ptr<Recordset> Recordset::Clone() const
{
    if (!require_open())
        return nullptr;
    auto clone = std::unique_ptr<Recordset>(new Recordset(core_, store_));
    clone->position_ = -1;
    clone->bof_ = clone->eof_ = false;
    if (clone->RecordCount() == 0)
        clone->bof_ = clone->eof_ = true;
    return clone;
}

bool Recordset::Requery()
{
    Err().Clear();
    if (!require_open())
        return false;
    CancelUpdate();
    if (!store_->load(*core_))
        return false;
    last_modified_ = -1;
    return MoveFirst();
}

// ---- Editing ----

bool Recordset::updatable() const
{
    if (!store_)
        return false;
    for (const FieldInfo& f : store_->fields)
        if (!f.table.isEmpty() && store_->keys.contains(f.table.toLower()))
            return true;
    return false;
}

bool Recordset::begin_edit(int mode)
{
    if (!updatable()) {
        raise_engine_error(jet::NotUpdatable, QStringLiteral("Cannot update. Database or object is read-only."));
        return false;
    }
    buffer_ = QVector<QVariant>(store_->fields.size());
    buffer_set_ = QVector<bool>(store_->fields.size(), false);
    edit_mode_ = mode;
    return true;
}

bool Recordset::AddNew()
{
    Err().Clear();
    return require_open() && begin_edit(editmode::Add);
}

bool Recordset::Edit()
{
    Err().Clear();
    return require_current() && begin_edit(editmode::InProgress);
}

bool Recordset::CancelUpdate()
{
    edit_mode_ = editmode::None;
    buffer_.clear();
    buffer_set_.clear();
    return true;
}

bool Recordset::Update()
{
    Err().Clear();
    if (!require_open())
        return false;
    if (edit_mode_ == editmode::None) {
        raise_engine_error(jet::UpdateWithoutAddNewOrEdit, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
        return false;
    }
    const bool ok = edit_mode_ == editmode::Add ? write_back_new() : write_back_edit();
    if (ok)
        CancelUpdate();
    return ok;
}

namespace {

// The fields set in the buffer, grouped by the table they come from.
QHash<QString, QList<int>> changed_by_table(const QVector<FieldInfo>& fields, const QVector<bool>& set)
{
    QHash<QString, QList<int>> groups;
    for (int i = 0; i < fields.size(); ++i)
        if (set[i] && !fields[i].table.isEmpty())
            groups[fields[i].table].append(i);
    return groups;
}

}  // namespace

bool Recordset::write_back_new()
{
    auto groups = changed_by_table(store_->fields, buffer_set_);
    if (groups.isEmpty()) {
        // A row of defaults in the one table the record set shows.
        for (const FieldInfo& f : store_->fields)
            if (!f.table.isEmpty()) {
                groups[f.table];
                break;
            }
    }
    Row row;
    row.serial = store_->next_serial++;
    row.values = QVector<QVariant>(store_->fields.size());
    store_->rows.push_back(row);
    const int index = static_cast<int>(store_->rows.size()) - 1;
    for (auto it = groups.constBegin(); it != groups.constEnd(); ++it) {
        QStringList columns;
        QStringList marks;
        QVector<QVariant> values;
        for (int i : it.value()) {
            FieldInfo f = store_->fields[i];
            QVariant stored;
            if (!store_value(buffer_[i], f, stored)) {
                store_->rows.pop_back();
                return false;
            }
            columns << quoted(f.origin);
            marks << QStringLiteral("?");
            values << stored;
        }
        const QString sql = columns.isEmpty()
                                ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoted(it.key()))
                                : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(quoted(it.key()), columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
        Statement stmt;
        if (!core_->connection.prepare(sql, stmt) || !core_->connection.bind_all(stmt, values) || !core_->connection.run(stmt)) {
            store_->rows.pop_back();
            return false;
        }
        if (!reread_row(index, it.key(), core_->connection.last_insert_rowid())) {
            store_->rows.pop_back();
            return false;
        }
    }
    last_modified_ = row.serial;
    return true;
}

bool Recordset::write_back_edit()
{
    const int index = current_row();
    if (index < 0)
        return no_current_record();
    const auto groups = changed_by_table(store_->fields, buffer_set_);
    for (auto it = groups.constBegin(); it != groups.constEnd(); ++it) {
        const auto key = store_->keys.constFind(it.key().toLower());
        if (key == store_->keys.constEnd()) {
            raise_engine_error(jet::NotUpdatable, QStringLiteral("Cannot update. Database or object is read-only."));
            return false;
        }
        QStringList assignments;
        QVector<QVariant> values;
        for (int i : it.value()) {
            QVariant stored;
            if (!store_value(buffer_[i], store_->fields[i], stored))
                return false;
            assignments << quoted(store_->fields[i].origin) + QStringLiteral(" = ?");
            values << stored;
        }
        QVariant key_value;
        store_value(store_->rows[index].values[key->field], store_->fields[key->field], key_value);
        values << key_value;
        const QString sql = QStringLiteral("UPDATE %1 SET %2 WHERE %3 = ?")
                                .arg(quoted(it.key()), assignments.join(QStringLiteral(", ")),
                                     key->column == QLatin1String("rowid") ? key->column : quoted(key->column));
        Statement stmt;
        if (!core_->connection.prepare(sql, stmt) || !core_->connection.bind_all(stmt, values) || !core_->connection.run(stmt))
            return false;
        if (core_->connection.changes() == 0) {
            raise_engine_error(3197, QStringLiteral("The data has been changed by another user since the record was read."));
            return false;
        }
        // The key may have been among the changed fields: find the row by its rowid now.
        Statement rowid;
        const QString find = QStringLiteral("SELECT rowid FROM %1 WHERE %2 = ?")
                                 .arg(quoted(it.key()), key->column == QLatin1String("rowid") ? key->column : quoted(key->column));
        QVariant new_key_value = key_value;
        if (buffer_set_[key->field])
            store_value(buffer_[key->field], store_->fields[key->field], new_key_value);
        if (!core_->connection.prepare(find, rowid) || !core_->connection.bind_all(rowid, {new_key_value}))
            return false;
        if (sqlite3_step(rowid.get()) == SQLITE_ROW) {
            const qint64 id = sqlite3_column_int64(rowid.get(), 0);
            rowid = Statement();
            if (!reread_row(index, it.key(), id))
                return false;
        }
    }
    last_modified_ = store_->rows[index].serial;
    return true;
}

bool Recordset::reread_row(int row, const QString& table, qint64 rowid)
{
    QList<int> indexes;
    QStringList columns;
    for (int i = 0; i < store_->fields.size(); ++i) {
        const FieldInfo& f = store_->fields[i];
        if (f.hidden && f.name == QLatin1String(hidden_key)) {
            indexes << i;
            columns << QStringLiteral("rowid");
        } else if (f.table.compare(table, Qt::CaseInsensitive) == 0) {
            indexes << i;
            columns << quoted(f.origin);
        }
    }
    Statement stmt;
    if (!core_->connection.prepare(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?").arg(columns.join(QStringLiteral(", ")), quoted(table)), stmt)
        || !core_->connection.bind_all(stmt, {rowid}))
        return false;
    if (sqlite3_step(stmt.get()) != SQLITE_ROW)
        return true;  // the row no longer shows through this key
    for (int c = 0; c < indexes.size(); ++c)
        store_->rows[row].values[indexes[c]] = present_value(column_value(stmt.get(), c), store_->fields[indexes[c]].type);
    return true;
}

bool Recordset::Delete()
{
    Err().Clear();
    if (!require_current())
        return false;
    if (!updatable()) {
        raise_engine_error(jet::NotUpdatable, QStringLiteral("Cannot update. Database or object is read-only."));
        return false;
    }
    CancelUpdate();
    Row& row = store_->rows[position_];
    // A row of a join belongs to the first table shown; that is the one deleted.
    const FieldInfo* first = nullptr;
    for (const FieldInfo& f : store_->fields)
        if (!f.table.isEmpty() && store_->keys.contains(f.table.toLower())) {
            first = &f;
            break;
        }
    const TableKey key = store_->keys.value(first->table.toLower());
    QVariant key_value;
    store_value(row.values[key.field], store_->fields[key.field], key_value);
    const QString sql = QStringLiteral("DELETE FROM %1 WHERE %2 = ?")
                            .arg(quoted(first->table), key.column == QLatin1String("rowid") ? key.column : quoted(key.column));
    Statement stmt;
    if (!core_->connection.prepare(sql, stmt) || !core_->connection.bind_all(stmt, {key_value}) || !core_->connection.run(stmt))
        return false;
    row.deleted = true;
    return true;
}

void Recordset::Close()
{
    CancelUpdate();
    store_.reset();
    position_ = -1;
    bof_ = eof_ = true;
}

}  // namespace engine
