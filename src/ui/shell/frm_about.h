#pragma once
// What the program is: its name, version, help and where its settings live.

#include <QWidget>

class QAction;
class QLabel;
class QMenuBar;

class frm_About : public QWidget {
    Q_OBJECT
public:
    explicit frm_About(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_exit = nullptr;
    QAction* mnu_Help = nullptr;
    QLabel* lbl_App_Name = nullptr;
    QLabel* lbl_app_revision = nullptr;
    QLabel* lbl_helpfile = nullptr;
    QLabel* lbl_ini_file = nullptr;

    void mnu_exit_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
};
