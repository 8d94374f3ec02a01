#pragma once
// The record-editing screen: one table, one bound record set, and the same
// behaviour on every screen that keeps records (navigation, add, update,
// cancel, delete, exit). A screen supplies its words, its fields and their
// columns, its own validations and its deletion guard; everything else is
// here, once.
//
// The state of a screen is the record set's EditMode and nothing else: 0 at
// rest, 1 editing, 2 adding. A record enters editing lazily, when a changed
// field loses the focus.

#include "toolkit/data_control.h"

#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class QAction;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;

// The words and labels that make the pattern a screen's own.
struct RecordScreenWords {
    QString form_name;                // "frm_Teachers": the screen's name
    QString caption;                  // "Teachers"
    QString module;                   // "fTeach": tag of the screen's reports
    QString move_selected_module;     // tag of Move_Selected's reports; empty: `module`
    QString data_name;                // "data_Teachers"
    QString noun;                     // "Teacher": "Adding a new Teacher", "Error accessing Teacher Control "
    QString control_noun;             // the noun of "Error accessing ... Control " where it differs; empty: `noun`
    QString choose_title;             // "Choose a Teaching Name to edit, or "
    QString titles_out_of_date;       // "Unexpected error - names are out of date"
    QString title_missing;            // "There must be a Teaching name"
    QString title_quotes;             // "The teaching name cannot include quotes"
    QString duplicate;                // "The Teaching Name must be unique"
    QString lost_after_update;        // "Could not find the Teacher who has just been updated!"
    QString deletion_refused = QStringLiteral("Deletion abandoned");
    QString empty_list;               // shown when the list is filled from no records; empty: nothing
    int help_context = 0;
    // Routine labels of the navigation commands in failure reports.
    QString first_routine = QStringLiteral("cmd_First");
    QString prev_routine = QStringLiteral("cmd_Prev");
    QString next_routine = QStringLiteral("cmd_Next");
    QString last_routine = QStringLiteral("cmd_Last");
    QString cancel_routine = QStringLiteral("cmd_Cancel_Click");
};

class RecordScreen : public QWidget {
    Q_OBJECT
public:
    ~RecordScreen() override;

    // The common controls, by their names.
    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QGroupBox* frame_Navigation = nullptr;
    QComboBox* cmb_Names = nullptr;
    QPushButton* cmd_First = nullptr;
    QPushButton* cmd_Prev = nullptr;
    QPushButton* cmd_Next = nullptr;
    QPushButton* cmd_Last = nullptr;
    QPushButton* cmd_Add = nullptr;
    QPushButton* cmd_Update = nullptr;
    QPushButton* cmd_Cancel = nullptr;
    QPushButton* cmd_Delete = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;
    QLineEdit* txt_Xfer_Id = nullptr;  // only on screens opened at a given record

    DataControl& data() { return data_; }
    int EditMode() const { return data_.EditMode(); }
    const RecordScreenWords& words() const { return words_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_First_Click();
    void cmd_Prev_Click();
    void cmd_Next_Click();
    void cmd_Last_Click();
    void cmd_Add_Click();
    // A screen on a single row stores it in place, without finding it again.
    virtual void cmd_Update_Click();
    void cmd_Cancel_Click();
    void cmd_Delete_Click();
    void cmb_Names_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();
    // Each time the screen comes to the front.
    virtual void Form_Activate();

protected:
    explicit RecordScreen(RecordScreenWords words, QWidget* parent = nullptr);

    // ---- Construction steps for a screen ----
    // A field with its label in one of the two columns of fields, 0 left and
    // 1 right: a one-line or several-line text box named `name`, or a field
    // of the screen's making that takes the height to spare (a list).
    QLineEdit* add_line(int column, const QString& name, const QString& label);
    QPlainTextEdit* add_text(int column, const QString& name, const QString& label);
    void add_growing_row(int column, const QString& label, QWidget* field);
    // A field of the screen's making (a list, a box with a word beside it)
    // that keeps its own height.
    void add_field_row(int column, const QString& label, QWidget* field);
    // A row of the screen's own making (check boxes side by side, a panel)
    // under the fields of a column, without a label; `widget` is given the
    // record area as parent.
    void add_row_widget(int column, QWidget* widget, bool grows = false);
    // The grid of a column of fields (label in column 0, field in column 1),
    // for a screen that arranges a row of its own.
    QGridLayout* column_layout(int column) const { return columns_[column == 0 ? 0 : 1]; }
    // A widget across the whole screen, under the columns of fields (a set of
    // tabs); with `grows` it takes the height to spare.
    void add_wide_widget(QWidget* widget, bool grows);
    // A further command, placed before the editing commands.
    QPushButton* add_command(const QString& name, const QString& caption);
    // The hidden box into which an opening screen writes the key to show.
    void add_xfer_id();

    // What a field does when it loses the focus, before Check_LostFocus.
    enum class OnLeave { Nothing, Upper_Case };
    // Binds a field to a column: Enter moves on, losing the focus runs
    // Check_LostFocus, and Clear_highlights covers it.
    void bind(QWidget* control, const QString& column, OnLeave on_leave = OnLeave::Nothing);
    // A field of money kept in a column that isn't CURRENCY (a price per
    // lesson): as bind(), shown with two decimals. CURRENCY columns are money
    // without saying so.
    void bind_money(QLineEdit* control, const QString& column);
    // A date: as bind(), shown in the long date format ("13 Mar 2027"); any
    // date the machine reads may be typed.
    void bind_date(QLineEdit* control, const QString& column);
    // The title field: as bind(), with the title's own check on losing the focus.
    void bind_title(QLineEdit* control, const QString& column);
    // A hidden field that shows a column and is never written (a key).
    void bind_hidden(QLineEdit* control, const QString& column);

    // Load's last step: opens the record set on the screen's source and fills the fields.
    void Setup_Controls(const QString& record_source, const QString& key_column, const QString& title_column);

    // ---- What the screen adds ----
    // Its own rules, after the title's; each failure shows its message and
    // takes the focus to its field.
    virtual bool Validate_Own_Rules() { return true; }
    // The guard of a deletion, given the record's key; it shows its own reason.
    virtual bool Check_Deletion(int key) = 0;
    // The search after a deletion from the middle; by default the deleted title,
    // which finds nothing, so the screen lands on the first record.
    virtual QString criteria_after_delete(const QString& title) const;
    // The field that takes the focus after cmd_Add; by default the title.
    virtual QWidget* first_field() const;
    // Fields that Clear_screen leaves as they are.
    virtual bool kept_by_clear_screen(const QWidget* /*control*/) const { return false; }
    // Anything more to clear, after the bound fields.
    virtual void clear_more() {}
    // False while the list must not follow the record (a bulk run).
    virtual bool list_follows_record() const { return true; }
    // Lists of the screen's own that are filled again whenever the names
    // list is (a list of the values already in use).
    virtual void Setup_Own_Lists() {}
    // After each move to a record, at rest: what the screen shows besides
    // the bound fields (counts of what refers to the record).
    virtual void Record_Shown() {}
    // cmd_Update's write of the record, after Validate_Data. True when it
    // is stored; otherwise the write has told the user why (a duplicate
    // keeps the edit open) and the update ends there.
    virtual bool Write_Record();
    // Where the screen goes after the current record was deleted; by
    // default the next record, or the first after a delete from the middle.
    virtual void Move_After_Delete(const QString& title);
    // Entries of the names list without keys: a record is found again by
    // its title, as on screens whose key isn't a number.
    void set_list_by_title() { list_by_title_ = true; }

    // ---- The pattern's routines ----
    void Setup_List();
    void Move_Selected();
    void Move_Selected(int key);
    // Positions the record set by a search; a failure is reported as Move_Selected's.
    void Move_To(const QString& criteria);
    bool Validate_Data();
    void Clear_highlights();
    void Clear_screen();
    void Check_LostFocus(QWidget* control);
    // What a failed write tells: the screen's duplicate words (the edit stays
    // open, the focus on the title) or the unexpected failure.
    void Report_Write_Failure();
    void set_status(const QString& text);
    QString current_title() const;
    int current_key() const;
    const QString& key_column() const { return key_column_; }
    const QString& title_column() const { return title_column_; }
    QLineEdit* title_field() const { return title_field_; }
    QHBoxLayout* command_row() const { return command_row_; }

    // A failure caught by a routine's trap.
    void report_unexpected(const QString& routine) const;
    // A state that the pattern doesn't know.
    void report_unexpected_mode(const QString& routine) const;

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Binding {
        std::unique_ptr<BoundField> field;
        QWidget* control = nullptr;
        OnLeave on_leave = OnLeave::Nothing;
        bool hidden = false;
    };

    void build_common_controls();
    void connect_commands();
    void on_reposition();
    void title_left();
    void field_left(QWidget* control);
    void show_list_at_current();
    bool navigation_allowed();
    Binding* binding_of(QWidget* control);

    RecordScreenWords words_;
    DataControl data_;
    std::vector<Binding> bindings_;
    QString key_column_;
    QString title_column_;
    QLineEdit* title_field_ = nullptr;
    QHBoxLayout* command_row_ = nullptr;
    int wide_widgets_ = 0;
    QLabel* field_label(const QString& text);
    void add_row(int column, const QString& label, QWidget* field, bool grows);

    QGridLayout* columns_[2] = {nullptr, nullptr};
    QWidget* record_area_ = nullptr;
    bool list_by_title_ = false;
};
