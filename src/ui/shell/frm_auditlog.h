#pragma once
// The audit log viewer: pages through the log from its end backwards.

#include "shell/audit_log_pages.h"

#include <QWidget>

class QAction;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;

class frm_auditlog : public QWidget {
    Q_OBJECT
public:
    explicit frm_auditlog(QWidget* parent = nullptr);
    ~frm_auditlog() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_exit = nullptr;
    QAction* mnu_help = nullptr;
    QPlainTextEdit* txt_Audit = nullptr;
    QPushButton* cmd_Up = nullptr;
    QPushButton* cmd_Down = nullptr;

    // Each time the viewer comes to the front: the log's last page.
    void Form_Activate();
    void cmd_Up_Click();
    void cmd_Down_Click();
    void mnu_exit_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    enum class ScrollTo { Top, Bottom };
    void show_page(ScrollTo where);

    AuditLogPager pager_;
};
