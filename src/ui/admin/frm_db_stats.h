#pragma once
// The Database information screen: the default database's file, size,
// creation and last backup, read each time the screen comes to the front.

#include <QWidget>

class QAction;
class QLabel;
class QMenuBar;

class frm_db_stats : public QWidget {
    Q_OBJECT
public:
    explicit frm_db_stats(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_exit = nullptr;
    QAction* mnu_help = nullptr;
    QLabel* lbl_dbfilename = nullptr;
    QLabel* lbl_filesize = nullptr;
    QLabel* lbl_diskfree = nullptr;  // laid out, never filled
    QLabel* lbl_Created = nullptr;
    QLabel* lbl_BU_date = nullptr;
    QLabel* lbl_BU_file = nullptr;

    void Form_Activate();
    void mnu_exit_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};
