#pragma once
// The Import Pupil Details screen: a file of pupils and their families chosen
// and read into the school. The reading and storing live in
// people/pupil_import; this screen asks its questions, shows the first line
// in full so that the user can tell whether it holds the column headings,
// shows each pupil as it goes in, and lets the user cancel.

#include "people/pupil_import.h"

#include <QWidget>
#include <array>
#include <memory>

class HourGlass;
class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;

class frm_Pupil_Import : public QWidget {
    Q_OBJECT
public:
    explicit frm_Pupil_Import(QWidget* parent = nullptr);
    ~frm_Pupil_Import() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_view_log = nullptr;
    QAction* mnu_Help = nullptr;

    QLineEdit* txt_File_Name = nullptr;
    QPushButton* cmd_Select = nullptr;

    // The fields of a line, in the file's order.
    QLineEdit* txt_First_Name = nullptr;
    QLineEdit* txt_Family_Name = nullptr;
    QLineEdit* txt_Alt_Surname = nullptr;
    QLineEdit* txt_BirthDate = nullptr;
    QLineEdit* txt_Gender = nullptr;
    QLineEdit* txt_P_Marker = nullptr;
    QLineEdit* txt_Medical = nullptr;
    QLineEdit* txt_Special = nullptr;
    QLineEdit* txt_E_Mail = nullptr;
    QLineEdit* txt_Ethnicity = nullptr;
    QLineEdit* txt_Pupil_Notes = nullptr;
    QLineEdit* txt_Ref1 = nullptr;
    QLineEdit* txt_Ref2 = nullptr;
    QLineEdit* txt_Ref3 = nullptr;
    QLineEdit* txt_Ref4 = nullptr;
    QLineEdit* txt_StartDate = nullptr;
    QLineEdit* txt_Regn_Fee = nullptr;
    QLineEdit* txt_Address = nullptr;
    QLineEdit* txt_Address2 = nullptr;
    QLineEdit* txt_Address3 = nullptr;
    QLineEdit* txt_Address4 = nullptr;
    QLineEdit* txt_PostCode = nullptr;
    QLineEdit* txt_Phone_1 = nullptr;
    QLineEdit* txt_Phone_2 = nullptr;
    QLineEdit* txt_Notes = nullptr;
    QLineEdit* txt_F_Marker = nullptr;
    QLineEdit* txt_Correspondence = nullptr;

    QPushButton* cmd_Add = nullptr;
    QPushButton* cmd_Cancel = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // The state of the import: the line, whether a stop was asked for, whether it runs.
    const pupil_import::PupilImport& import_state() const { return import_; }
    // What the last import came to.
    const pupil_import::ImportOutcome& last_outcome() const { return outcome_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_Select_Click();
    void cmd_Add_Click();
    void cmd_Cancel_Click();
    void mnu_Exit_Click();
    void mnu_view_log_Click();
    void mnu_Help_Click();

    // Shows every field, filled from the line, or only the four that follow
    // the import's progress (first name, family name, date of birth, start date).
    void Show_Fields(bool show_all, const pupil_import::Record* record = nullptr);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build_controls();
    // Refuses, with its words, while an import runs; true when none does.
    bool not_running();

    std::array<QLineEdit*, pupil_import::Field_Count> fields_{};
    std::array<QLabel*, pupil_import::Field_Count> labels_{};  // null for the three references without a label
    pupil_import::PupilImport import_;
    pupil_import::ImportOutcome outcome_;
    std::unique_ptr<HourGlass> wait_;
};
