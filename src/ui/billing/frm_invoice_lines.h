#pragma once
// The Invoice Lines screen, where an invoice and its lines are made or changed
// by hand. It has two halves, each with its own state: the invoice (date,
// reason, notes, term or activity date) and one of its lines (pupil, course or
// activity, amount, description). The background of each half's id box is
// its state: white when nothing is in progress, pale blue while changes are;
// a half in progress keeps the other from being changed. Opened only from
// the Invoices screen, through fIL_Display_Invoice.

#include "billing/invoice_entry.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QWidget>
#include <optional>

class QAction;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;

class frm_Invoice_Lines : public QWidget {
    Q_OBJECT
public:
    explicit frm_Invoice_Lines(QWidget* parent = nullptr);

    // Shows a family's invoice: invoice_id 0 starts a new invoice; line_id 0
    // starts a new line on it, -1 leaves the line alone, any other shows that
    // line. False, doing nothing, for a family id not above 0.
    bool fIL_Display_Invoice(const QString& family_name, const QString& address, int family_id, int invoice_id,
                             int line_id);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QLineEdit* txt_Family_Name = nullptr;
    QLineEdit* txt_Address = nullptr;
    // The invoice's half. Each text box's element 0, the value last loaded,
    // is held beside it.
    QGroupBox* frame_Invoice = nullptr;
    QLineEdit* txt_Invoice_id = nullptr;
    QLineEdit* txt_Date = nullptr;
    QLineEdit* txt_Reason = nullptr;
    QPlainTextEdit* txt_Notes = nullptr;
    QListWidget* lst_Terms = nullptr;
    QListWidget* lst_Activity_Dates = nullptr;
    QPushButton* cmd_Update = nullptr;
    QPushButton* cmd_Cancel = nullptr;
    // The line's half.
    QGroupBox* frame_Line = nullptr;
    QLineEdit* txt_Line_id = nullptr;
    QListWidget* lst_Pupils = nullptr;
    QListWidget* lst_Courses = nullptr;
    QListWidget* lst_Activities = nullptr;
    QLineEdit* txt_Amount = nullptr;
    QLineEdit* txt_Description = nullptr;
    QPushButton* cmd_Add_Line = nullptr;
    QPushButton* cmd_Update_Line = nullptr;
    QPushButton* cmd_Line_Cancel = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // What the commands do, so that they can be pressed by program.
    void cmd_Update_Click();
    void cmd_Cancel_Click();
    void cmd_Add_Line_Click();
    void cmd_Update_Line_Click();
    void cmd_Line_Cancel_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_controls();
    void connect_controls();

    // The halves' states, as their id boxes show them.
    bool invoice_in_progress() const;
    bool line_in_progress() const;
    int invoice_id() const;
    int line_id() const;

    // Reading and clearing.
    void Display_Invoice();
    void Display_Line();
    void Clear_Invoice_screen();
    void Clear_Line_screen();
    void cancel_half(bool in_progress, int id, void (frm_Invoice_Lines::*clear)(), void (frm_Invoice_Lines::*display)());
    void Clear_highlights();
    void Clear_Line_Highlights();
    void Add_New();
    // The element 0 copies and the lists' choices as they now stand.
    void remember_invoice_as_loaded();
    void remember_line_as_loaded();

    // The lists.
    void Get_Terms();
    void Get_Activity_Dates();
    void Get_Pupils();
    void Get_Courses();
    void Get_Activities();
    void fill_list(QListWidget* list, const ListEntries& entries);
    void set_list_index(QListWidget* list, int row);
    void lst_Terms_Click();
    void lst_Activity_Dates_Click();
    void lst_Pupils_Click();
    void lst_Courses_Click();
    void lst_Activities_Click();
    // Both of two lists showing a choice above "(Blank)": `words` and the
    // other list loses its choice.
    void refuse_both(QListWidget* clicked, QListWidget* other, const QString& words);

    // Leaving a field.
    bool changed(QWidget* field) const;
    void field_left(QWidget* field);
    void Check_LostFocus_Invoice(QWidget* field);
    void Check_LostFocus_Line(QWidget* field);
    void focus_back(QWidget* field);

    void show_status(const QString& text);

    int family_id_ = 0;
    // Element 0 of each pair of text boxes: the value last loaded or stored.
    QString date_0_;
    QString reason_0_;
    QString notes_0_;
    QString amount_0_;
    QString description_0_;
    // The row each list showed chosen when its half was last loaded or stored.
    QHash<const QListWidget*, int> loaded_rows_;
    // The invoice's activity date as stored: the activities listed for a
    // pupil are those of that date.
    std::optional<QDate> invoice_activity_date_;
    bool filling_ = false;          // the program, not the user, is changing a list
    bool returning_focus_ = false;  // a field is being given the focus back after a refusal
};
