#pragma once
// The Term Dates screen: a term's name and dates, its calendar of up to 16
// weeks where a click makes a day a holiday or a school day again, and the
// lessons per weekday under it. The calculation lives in TermCalendar; this
// screen shows what it holds and passes on what the user does.

#include "calendar/term_calendar.h"
#include "toolkit/data_control.h"

#include <QWidget>
#include <array>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;

class frm_Dates : public QWidget {
    Q_OBJECT
public:
    explicit frm_Dates(QWidget* parent = nullptr);
    ~frm_Dates() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Clear = nullptr;
    QAction* mnu_Help = nullptr;
    QComboBox* cmb_Name = nullptr;
    QLineEdit* txt_Term_Name = nullptr;
    QLineEdit* txt_Term_id = nullptr;  // hidden; blank for a term not yet saved
    QLineEdit* txt_Start_Date = nullptr;
    QLineEdit* txt_End_Date = nullptr;
    QLineEdit* txt_Num_Invoices = nullptr;
    std::array<QLabel*, term_grid::Days> txg_Hdr{};
    std::array<QLabel*, term_grid::Cells> txg_Element{};  // cell n is weekday n % 7
    std::array<QLineEdit*, term_grid::Days> txt_Total{};
    QPushButton* cmd_Add = nullptr;
    QPushButton* cmd_Delete = nullptr;
    QPushButton* cmd_Save = nullptr;

    DataControl& data_Dates() { return data_; }
    const TermCalendar& calendar() const { return calendar_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_Add_Click();
    void cmd_Delete_Click();
    void cmd_Save_Click();
    void cmb_Name_Click();  // a term chosen in cmb_Name
    void txg_Element_Click(int n);
    void mnu_Clear_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();
    // True when nothing is unsaved, or the user chose to discard it.
    bool Check_OK_To_Exit();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_controls();
    void Setup_Controls();
    void Refresh_Recordset();
    void read_from_db(bool first_record);
    void Clear_Screen();
    void data_Dates_Reposition();
    void Start_Date_Left();
    void End_Date_Left();
    void Term_Name_Left();
    // Fills the grid from the two boxes and writes both in the long date format.
    void fill_from_boxes(QDate start, QDate end);

    // Between the widgets and the calendar's state.
    void show_calendar();
    void show_cell(int n);
    void show_totals();
    void boxes_to_calendar();
    // Gives the focus back to a field after a refusal; its own loss of focus
    // and the other fields' are not checked again meanwhile.
    void focus_back(QLineEdit* field);

    void report_unexpected(const QString& routine) const;

    TermCalendar calendar_;
    DataControl data_;
    bool shown_once_ = false;
    bool returning_focus_ = false;
};
