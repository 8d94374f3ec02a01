#pragma once
// The program's file selector, on the Qt file dialog: picks an existing file,
// names a new file, or picks a folder, as the caller asked in
// Glob_File_Select, and leaves the choice there.

#include <QFileDialog>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QWidget;

class frm_Select_File : public QFileDialog {
    Q_OBJECT
public:
    // Load and Activate: reads the request from Glob_File_Select.
    explicit frm_Select_File(QWidget* parent = nullptr);

    // Shows the selector modally; true when the user chose (Cancelled is false).
    static bool Select(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_exit = nullptr;
    QAction* mnu_Help = nullptr;
    QWidget* lst_Directory = nullptr;  // the folder being looked in
    QWidget* lst_File = nullptr;       // the files (and folders) in it
    QComboBox* cmb_file_type = nullptr;
    QLineEdit* txt_New_File = nullptr;
    QLabel* lbl_New_Name = nullptr;
    QPushButton* cmd_Select = nullptr;
    QPushButton* cmd_Cancel = nullptr;

    // The commands, as the buttons (and Enter, Escape, Exit) run them.
    void cmd_Select_Click();
    void cmd_Cancel_Click();

    void accept() override;
    void reject() override;

private:
    void name_controls();
    // The folder on show, without a "/" at its end unless it is the root.
    QString current_folder() const;
    // The existing file chosen in the list, without its folder; empty for none.
    QString chosen_file() const;
};
