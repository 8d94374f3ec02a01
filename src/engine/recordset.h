#pragma once
// Rows of a table or query held in memory, with DAO's navigation, search,
// bookmarks, clones and editing. Edits are written back by key to the table
// that each field comes from.

#include "engine/field_type.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <memory>

namespace engine {

struct DatabaseCore;
struct RowStore;

using Bookmark = qint64;

namespace editmode {
inline constexpr int None = 0;
inline constexpr int InProgress = 1;
inline constexpr int Add = 2;
}  // namespace editmode

struct FieldInfo {
    QString name;
    FieldType type = FieldType::Unknown;
    int text_length = 0;        // TEXT(n) limit; 0 none
    QString table;              // base table, empty for an expression
    QString origin;             // column in the base table
    bool hidden = false;        // the engine's own row key, not shown as a field
};

class Recordset {
public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Navigation. Moving past either end sets EOF or BOF; moving on from there raises 3021.
    bool MoveFirst();
    bool MoveLast();
    bool MoveNext();
    bool MovePrevious();
    bool at_bof() const;  // BOF
    bool at_eof() const;  // EOF
    int RecordCount() const;
    int AbsolutePosition() const;  // 0-based among the rows not deleted; -1 without a current record

    // Fields. Values: null is an invalid QVariant; dates QDateTime (UTC), money
    // engine::Currency, booleans bool, whole numbers int, others double or QString.
    int field_count() const;
    const FieldInfo& field(int index) const;
    int field_index(const QString& name) const;  // -1 when there's no such field
    QStringList field_names() const;
    // Fields(name): raises 3265 for an unknown name, 3021 without a current record.
    bool get(const QString& name, QVariant& value) const;
    QVariant Fields(const QString& name) const;  // null on failure
    // Fields(name) = value, during Edit or AddNew (3020 otherwise). The value is
    // converted to the field's type: 3421 when it can't be, 3163 for text too long.
    bool set(const QString& name, const QVariant& value);

    // Search. Criteria as DAO takes them: Family_Name > "Smith", Term_id = 5, day_off = #01/05/2026#.
    bool FindFirst(const QString& criteria);
    bool FindLast(const QString& criteria);
    bool FindNext(const QString& criteria);
    bool FindPrevious(const QString& criteria);
    bool NoMatch() const { return no_match_; }

    // Bookmarks stay valid for the life of the rows, across clones, until Requery.
    Bookmark bookmark() const;  // -1 without a current record
    bool set_bookmark(Bookmark mark);
    Bookmark LastModified() const { return last_modified_; }
    // A second cursor over the same rows; it starts without a current record.
    std::unique_ptr<Recordset> Clone() const;

    // Runs the query again; the cursor goes to the first row.
    bool Requery();

    bool AddNew();
    bool Edit();
    // Writes the edit buffer; 3022 and the like leave the edit in progress.
    bool Update();
    bool CancelUpdate();
    // Deletes the current row; the cursor then stands on no record until it moves.
    bool Delete();
    int EditMode() const { return edit_mode_; }
    bool updatable() const;

    void Close();

private:
    friend class Database;
    friend class QueryDef;
    Recordset(std::shared_ptr<DatabaseCore> core, std::shared_ptr<RowStore> store);

    bool require_open() const;
    bool require_current() const;
    int current_row() const;  // index into the store; -1 when none
    bool find(const QString& criteria, bool forward, int from_row);
    bool begin_edit(int mode);
    bool move_to_end(bool first);
    bool write_back_new();
    bool write_back_edit();
    bool reread_row(int row, const QString& table, qint64 key);

    std::shared_ptr<DatabaseCore> core_;
    std::shared_ptr<RowStore> store_;
    // The cursor: a position among the store's rows; BOF and EOF flags.
    int position_ = -1;
    bool bof_ = true;
    bool eof_ = true;
    bool no_match_ = false;
    int edit_mode_ = editmode::None;
    QVector<QVariant> buffer_;
    QVector<bool> buffer_set_;
    Bookmark last_modified_ = -1;
};

}  // namespace engine
