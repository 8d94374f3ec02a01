#include "ui/shell/frm_auditlog.h"

#include "shell/app_globals.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/shell/switch_screen.h"

#include <QAction>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

frm_auditlog::frm_auditlog(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_auditlog"));
    setWindowTitle(QStringLiteral("Audit Log Viewer"));
    Screen_Setup(this, true, Glob_Form_Colour());

    // The menu, the log's text, and the two page buttons below it.
    auto* layout = new QVBoxLayout(this);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout, QStringLiteral("mnu_exit"), QStringLiteral("mnu_help"));
    menu_bar = menu.bar;
    mnu_exit = menu.exit;
    mnu_help = menu.help;

    txt_Audit = new QPlainTextEdit(this);
    txt_Audit->setObjectName(QStringLiteral("txt_Audit"));
    txt_Audit->setReadOnly(true);
    txt_Audit->setLineWrapMode(QPlainTextEdit::NoWrap);
    txt_Audit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txt_Audit->setAccessibleName(windowTitle());
    layout->addWidget(txt_Audit, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmd_Up = new QPushButton(QStringLiteral("Page &Up"), this);
    cmd_Up->setObjectName(QStringLiteral("cmd_Up"));
    cmd_Down = new QPushButton(QStringLiteral("Page &Down"), this);
    cmd_Down->setObjectName(QStringLiteral("cmd_Down"));
    buttons->addWidget(cmd_Up);
    buttons->addWidget(cmd_Down);
    layout->addLayout(buttons);

    connect(cmd_Up, &QPushButton::clicked, this, &frm_auditlog::cmd_Up_Click);
    connect(cmd_Down, &QPushButton::clicked, this, &frm_auditlog::cmd_Down_Click);
    connect(mnu_exit, &QAction::triggered, this, &frm_auditlog::mnu_exit_Click);
    connect(mnu_help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Audit_Log); });

    // A page of the log stays readable, a line's start and a few lines of it.
    const QFontMetrics log_metrics(txt_Audit->font());
    txt_Audit->setMinimumSize(log_metrics.horizontalAdvance(QLatin1Char('0')) * 50, log_metrics.lineSpacing() * 8);
    resize(minimumSizeHint().expandedTo(QSize(900, 560)));
}

frm_auditlog::~frm_auditlog()
{
    pager_.close();
}

void frm_auditlog::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_auditlog::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_exit_Click(); }))
        return;
    pager_.close();
    event->accept();
}

void frm_auditlog::Form_Activate()
{
    txt_Audit->clear();
    switch (pager_.activate(Current_Log_File())) {
    case AuditLogPager::Activation::Shown: show_page(ScrollTo::Bottom); break;
    case AuditLogPager::Activation::OpenFailed:
        cmd_Up->setEnabled(false);
        cmd_Down->setEnabled(false);
        break;
    case AuditLogPager::Activation::ReadFailed:
        QTimer::singleShot(0, this, [this] { Switch_Screen(this, nullptr, false); });
        break;
    }
}

void frm_auditlog::cmd_Down_Click()
{
    if (pager_.page_down())
        show_page(ScrollTo::Top);
}

void frm_auditlog::cmd_Up_Click()
{
    if (pager_.page_up())
        show_page(ScrollTo::Bottom);
}

void frm_auditlog::mnu_exit_Click()
{
    Switch_Screen(this, nullptr, false);
}

void frm_auditlog::show_page(ScrollTo where)
{
    txt_Audit->setPlainText(pager_.text_to_show());
    cmd_Up->setEnabled(pager_.up_enabled());
    cmd_Down->setEnabled(pager_.down_enabled());
    QScrollBar* bar = txt_Audit->verticalScrollBar();
    bar->setValue(where == ScrollTo::Top ? bar->minimum() : bar->maximum());
}
