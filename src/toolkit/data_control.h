#pragma once
// The data control: an updatable record set on the open database, with the
// fields bound to its columns. Each bound field remembers whether it was
// changed since the control last filled it (DataChanged); the control fills
// every field from the current record whenever the record moves
// (UpdateControls) and then tells its listener (Reposition).
//
// The control never writes on its own when the record moves: a pending edit is
// dropped by a move, and the bound values reach the record only in Update().

#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

namespace engine {
class Database;
class Recordset;
}  // namespace engine

// One field bound to a column. The screen side says how a control shows a
// value and what value it holds; this side keeps DataChanged.
class BoundField {
public:
    explicit BoundField(QString data_field) : data_field_(std::move(data_field)) {}
    virtual ~BoundField() = default;
    BoundField(const BoundField&) = delete;
    BoundField& operator=(const BoundField&) = delete;

    const QString& DataField() const { return data_field_; }
    bool DataChanged() const { return data_changed_; }
    void set_DataChanged(bool changed) { data_changed_ = changed; }

    // A field that shows its column but is never written (a key, a computed column).
    bool read_only() const { return read_only_; }
    void set_read_only(bool read_only) { read_only_ = read_only; }

    // The most characters the column takes (TEXT(n)); 0 for no limit. The
    // control then takes no more than that, whatever is typed or pasted.
    int max_length() const { return max_length_; }
    void set_max_length(int characters)
    {
        max_length_ = characters;
        apply_max_length(characters);
    }

    // A field of money shows its value with two decimal places at least
    // ("5.50"), and up to the four that money keeps.
    bool is_money() const { return money_; }
    void set_money(bool money) { money_ = money; }

    // A Format picture the value is shown with ("dd mmm yyyy" for a date);
    // empty: the value's plain text.
    void set_picture(const QString& picture) { picture_ = picture; }

    // Shows the record's value; afterwards DataChanged is false.
    void fill(const QVariant& value);
    // The control calls this for every change of its content, by the user or
    // by the program; changes made by fill() don't count.
    void note_change()
    {
        if (!filling_)
            data_changed_ = true;
    }

    // The value the control holds, as the column is to get it: blank text is Null.
    virtual QVariant value() const = 0;
    // True for a check box, which counts as filled in whatever its state.
    virtual bool is_check_box() const { return false; }
    // The control's text after trimming; empty for a check box.
    virtual QString trimmed_text() const { return QString(); }

protected:
    virtual void show_value(const QVariant& value) = 0;
    // Limits the control to `characters` (0: no limit); nothing for a check box.
    virtual void apply_max_length(int /*characters*/) {}
    // The plain text of a value, as a text box shows it.
    QString text_of(const QVariant& value) const;

private:
    QString data_field_;
    bool data_changed_ = false;
    bool filling_ = false;
    bool read_only_ = false;
    bool money_ = false;
    QString picture_;
    int max_length_ = 0;
};

// The text of an amount of money as a field shows it: rounded to the four
// places that money keeps, with two decimals at least, in the machine's
// decimal point. Text that isn't a number is given back as it is.
QString Money_Text(const QVariant& value);

class DataControl {
public:
    // `name` is the control's name (data_Teachers); `error_words` begin the
    // report of a failure of the control itself ("Error accessing Teacher
    // Control "); `module` is the screen's tag for the log.
    DataControl(QString name, QString error_words, QString module);
    ~DataControl();
    DataControl(const DataControl&) = delete;
    DataControl& operator=(const DataControl&) = delete;

    const QString& name() const { return name_; }

    // Binds a field; its DataField names the column. The control doesn't own it.
    void bind(BoundField* field);
    const std::vector<BoundField*>& bound_fields() const { return fields_; }

    // DatabaseName and RecordSource, then Refresh: opens the record set on a
    // table, a stored query or SQL text and fills the bound fields. Each
    // field learns its column's limits: a TEXT(n) column's n as its most
    // characters, a CURRENCY column that it shows money. A failure is
    // reported as the control's Error and gives false.
    bool Refresh(engine::Database* database, const QString& record_source);
    const QString& RecordSource() const { return record_source_; }

    // The record set; null before Refresh succeeded and after Close.
    engine::Recordset* Recordset() const { return recordset_.get(); }
    bool is_empty() const;  // no record set, or both BOF and EOF

    // Fills every bound field from the current record: blank without one,
    // the edit buffer during an edit.
    void UpdateControls();
    // After AddNew: every bound field, check boxes included, shows the new
    // record's value, except those that `keeps_its_value` names, which stay
    // as they are. So nothing of the record shown before is carried into a
    // new one without the screen saying so.
    void fill_new_record(const std::function<bool(const BoundField&)>& keeps_its_value);

    // Called after every move that leaves a current record or none.
    void set_on_reposition(std::function<void()> listener) { on_reposition_ = std::move(listener); }

    // The record set's moves, each followed by UpdateControls and Reposition.
    // They fail (engine error set) as the record set's own do.
    bool MoveFirst();
    bool MoveLast();
    bool MoveNext();
    bool MovePrevious();
    bool FindFirst(const QString& criteria);
    bool NoMatch() const;
    bool Requery();

    // Editing. AddNew and Edit leave the fields as they are.
    int EditMode() const;
    bool AddNew();
    bool Edit();
    bool CancelUpdate();
    // Writes the bound values into the record and saves it: during an AddNew
    // every field that may be written, during an Edit those whose DataChanged
    // is set. A failure (3022 and the like) leaves the edit in progress.
    bool Update();
    // Deletes the current record; the fields keep showing it until a move.
    bool Delete();

    void Close();

    // The control's Error event: reports the engine error with the control's words.
    void report_error(const QString& routine) const;

private:
    bool moved(bool ok);
    void learn_column_limits();

    QString name_;
    QString error_words_;
    QString module_;
    QString record_source_;
    std::unique_ptr<engine::Recordset> recordset_;
    std::vector<BoundField*> fields_;
    std::function<void()> on_reposition_;
};
