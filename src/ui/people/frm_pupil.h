#pragma once
// Pupil Details: one pupil and the pupil's family side by side, with the
// pupil's courses, exams and festivals and the family's invoices on tab
// pages. A new pupil is added here, with a new or an existing family, and put
// on courses.
//
// Unlike the record-editing screens, the record set behind the screen is only
// read and positioned, never written. Edits stay in the fields; two flags say
// whether the pupil's or the family's fields hold unsaved changes, and Update
// writes each half through the stored queries. A course chosen in the list of
// available courses is a change too, until Update puts the pupil on it.

#include "toolkit/data_control.h"
#include "toolkit/gen_colours.h"

#include <QFrame>
#include <QString>
#include <QWidget>
#include <array>
#include <map>
#include <memory>
#include <vector>

class DataGrid;
class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace engine {
class Recordset;
}

// The shape beside the sex choices: the pupil's colour, solid for a pupil on
// the lists and cross-hatched for a hidden one (or a gender not known).
class GenderShape : public QFrame {
    Q_OBJECT
public:
    explicit GenderShape(QWidget* parent = nullptr);
    void set_look(const colours::Rgb& colour, bool cross_hatched);
    colours::Rgb colour() const { return colour_; }
    bool cross_hatched() const { return cross_hatched_; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    colours::Rgb colour_{255, 255, 255};
    bool cross_hatched_ = false;
};

class frm_Pupil : public QWidget {
    Q_OBJECT
public:
    explicit frm_Pupil(QWidget* parent = nullptr);
    ~frm_Pupil() override;

    // ---- The menu, the list of pupils and the commands ----
    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QGroupBox* frame_Navigation = nullptr;
    QComboBox* cmb_Navigation = nullptr;
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

    // ---- Always in view: who the pupil is and which family ----
    QLineEdit* txt_Pupil_id = nullptr;
    QLineEdit* txt_Family_id = nullptr;
    QLineEdit* txt_Family_Name = nullptr;
    QLineEdit* txt_First_Name = nullptr;
    QComboBox* cmb_Family_Names = nullptr;
    QPushButton* cmd_Add_Family = nullptr;

    QTabWidget* SSTab1 = nullptr;

    // ---- "Family Details" ----
    QLineEdit* txt_Address = nullptr;
    QLineEdit* txt_Address2 = nullptr;
    QLineEdit* txt_Address3 = nullptr;
    QLineEdit* txt_Address4 = nullptr;
    QLineEdit* txt_Post_Code = nullptr;
    QLineEdit* txt_Phone1 = nullptr;
    QLineEdit* txt_Phone2 = nullptr;
    QLineEdit* txt_Correspondence = nullptr;
    QLineEdit* txt_Family_Marker = nullptr;
    QPlainTextEdit* txt_Family_Notes = nullptr;

    // ---- "Pupil Details" ----
    QLineEdit* txt_Alt_Surname = nullptr;
    QLineEdit* txt_BirthDate = nullptr;
    QLineEdit* txt_Age_Years = nullptr;
    QLineEdit* txt_Age_Months = nullptr;
    QRadioButton* Opt_Male = nullptr;
    QRadioButton* Opt_Female = nullptr;
    QCheckBox* Chk_Hidden = nullptr;
    GenderShape* Shape_Gender = nullptr;
    QLineEdit* txt_Gender = nullptr;  // hidden: the letter that is stored
    QLineEdit* txt_Ref = nullptr;
    QLineEdit* txt_Ref2 = nullptr;
    QLineEdit* txt_Ref3 = nullptr;
    QLineEdit* txt_Ref4 = nullptr;
    QLineEdit* txt_Medical = nullptr;
    QLineEdit* txt_Pupil_Marker = nullptr;
    QLineEdit* txt_Special_Needs = nullptr;
    QLineEdit* txt_E_Mail = nullptr;
    QLineEdit* txt_Regn_Fee = nullptr;
    QLineEdit* txt_StartDate = nullptr;
    QLineEdit* txt_Ethnicity = nullptr;
    QPlainTextEdit* txt_Pupil_Notes = nullptr;

    // ---- "Courses", "Exams", "Festivals", "Accounts" ----
    DataGrid* DBGrid_Courses_Taken = nullptr;
    QListWidget* lst_Courses_Added = nullptr;
    QPushButton* cmd_Reg_Delete = nullptr;
    DataGrid* DBGrid_Exams_Taken = nullptr;
    DataGrid* DBGrid_Festivals = nullptr;
    DataGrid* DBGrid_Accounts = nullptr;
    QCheckBox* chk_Show_Outstanding = nullptr;
    // Index 0 "Make Payment", index 1 "View Invoice".
    std::array<QPushButton*, 2> cmd_Invoice_Receipt{};

    // ---- The screen's state ----
    bool Pupil_Changed = false;   // the pupil's fields hold unsaved changes
    bool Family_Changed = false;  // the family's fields hold unsaved changes
    bool Gender_Loading = false;  // the sex choices are being shown, not clicked
    QString Current_Name;         // the pupil to come back to after an update

    DataControl& data_Navigation() { return data_Navigation_; }
    engine::Recordset* Data_Courses_Taken() const { return courses_taken_.get(); }
    engine::Recordset* Data_Accounts() const { return accounts_.get(); }

    // What the commands and lists do, so that they can be pressed by program.
    void cmd_First_Click();
    void cmd_Prev_Click();
    void cmd_Next_Click();
    void cmd_Last_Click();
    void cmd_Add_Click();
    void cmd_Update_Click();
    void cmd_Cancel_Click();
    void cmd_Delete_Click();
    void cmd_Add_Family_Click();
    void cmd_Reg_Delete_Click();
    void cmd_Invoice_Receipt_Click(int index);
    void cmb_Navigation_Click();
    void cmb_Family_Names_Click();
    void chk_Show_Outstanding_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();
    // Each time the screen comes to the front.
    void Form_Activate();

    // True when anything is waiting to be saved: the pupil's or the family's
    // fields, or a course chosen to put the pupil on. The field being typed
    // in is left first, so that its change counts.
    bool Check_Changes();
    // The family's fields on the first page refuse typing while locked.
    void Lock_Family(bool locked);
    bool family_locked() const;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Half { Family, Pupil, Header };
    struct Field {
        std::unique_ptr<BoundField> bound;
        QWidget* control = nullptr;
        Half half = Half::Header;
    };

    // ---- Building ----
    void build();
    QWidget* build_header();
    QWidget* build_family_page();
    QWidget* build_pupil_page();
    QWidget* build_courses_page();
    QWidget* build_accounts_page();
    QLineEdit* line(QWidget* parent, const QString& name);
    void bind(QWidget* control, const QString& column, Half half);
    void connect_commands();

    // ---- Loading and showing ----
    void Setup_Controls();
    void Setup_Navigation_List();
    void Fill_Family_Names();
    void Fill_Available_Courses();
    void Move_Selected_Navigation();
    bool navigation_allowed();
    void on_reposition();
    void show_list_at_current();
    void Display_Pupil();
    void Display_Age_Of(const QVariant& birth_date);
    void Display_Gender();
    bool Display_Family(int family_id);
    bool open_exams(int pupil_id);
    bool open_festivals(int pupil_id);
    bool open_courses(int pupil_id);
    bool open_pupil_grids(int pupil_id);
    bool open_accounts(int family_id, const QString& query);
    bool has_record() const;

    // ---- Editing ----
    void Clear_Pupil();
    void Clear_Family(bool keep_name);
    void Clear_Family_Highlights();
    void Clear_Pupil_Highlights();
    void Check_lostfocus_Family(QWidget* control);
    void Check_lostfocus_Pupil(QWidget* control);
    bool txt_family_name_Validate();
    bool date_field_Validate(QLineEdit* field);
    void gender_clicked(bool male, bool hidden);
    void txt_Gender_Changed();
    bool Update_Family_Fields();
    bool Update_Pupil_Fields();
    bool Update_Registers();
    void refresh_after_change();
    bool leave_allowed();
    void set_status(const QString& text);
    Field* field_of(QWidget* control);
    BoundField* bound(QWidget* control);
    QVariant record_value(const QString& column) const;
    void report_unexpected(const QString& routine) const;

    DataControl data_Navigation_;
    std::vector<Field> fields_;
    std::unique_ptr<engine::Recordset> courses_taken_;
    std::unique_ptr<engine::Recordset> exams_taken_;
    std::unique_ptr<engine::Recordset> festivals_;
    std::unique_ptr<engine::Recordset> accounts_;
    bool validating_name_ = false;
};
