#include "ui/admin/frm_db_stats.h"

#include "database/database_facts.h"
#include "shell/app_globals.h"
#include "toolkit/help_pages.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>
#include <QShowEvent>
#include <QVBoxLayout>

frm_db_stats::frm_db_stats(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_db_stats"));
    setWindowTitle(QStringLiteral("Database information"));
    Screen_Setup(this, true, Glob_Form_Colour());

    auto* layout = new QVBoxLayout(this);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout, QStringLiteral("mnu_exit"), QStringLiteral("mnu_help"));
    menu_bar = menu.bar;
    mnu_exit = menu.exit;
    mnu_help = menu.help;

    // Each fact beside its caption.
    auto* facts = new QGridLayout;
    facts->setHorizontalSpacing(12);
    facts->setVerticalSpacing(10);
    // lbl_diskfree, which nothing fills, goes last so that it leaves no gap.
    const std::pair<QLabel**, const char*> rows[] = {
        {&lbl_dbfilename, "Database file name :"}, {&lbl_filesize, "Size (bytes) :"},
        {&lbl_Created, "Created on :"},            {&lbl_BU_date, "Date of last backup :"},
        {&lbl_BU_file, "Backup Filename :"},       {&lbl_diskfree, nullptr},
    };
    const char* const names[] = {"lbl_dbfilename", "lbl_filesize", "lbl_Created", "lbl_BU_date", "lbl_BU_file", "lbl_diskfree"};
    int row = 0;
    for (const auto& [label, caption] : rows) {
        *label = new QLabel(this);
        (*label)->setObjectName(QString::fromLatin1(names[row]));
        (*label)->setTextInteractionFlags(Qt::TextSelectableByMouse);
        if (caption) {
            auto* caption_label = new QLabel(QString::fromLatin1(caption), this);
            facts->addWidget(caption_label, row, 0, Qt::AlignRight);
            (*label)->setAccessibleName(caption_label->text());
        }
        facts->addWidget(*label, row, 1);
        ++row;
    }
    facts->setColumnStretch(1, 1);
    layout->addLayout(facts);
    layout->addStretch(1);

    connect(mnu_exit, &QAction::triggered, this, &frm_db_stats::mnu_exit_Click);
    connect(mnu_help, &QAction::triggered, this,
            [this] { Show_Help(this, help::Context, help::context::Database_Statistics); });
    resize(minimumSizeHint().expandedTo(QSize(560, 0)));
}

void frm_db_stats::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_db_stats::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_exit_Click(); }))
        return;
    event->accept();
}

void frm_db_stats::Form_Activate()
{
    const DatabaseFacts facts = Gather_Database_Facts();
    lbl_dbfilename->setText(facts.file_name);
    lbl_filesize->setText(facts.size);
    lbl_Created->setText(facts.created);
    lbl_BU_date->setText(facts.backup_date);
    lbl_BU_file->setText(facts.backup_file);
}

void frm_db_stats::mnu_exit_Click()
{
    Switch_Screen(this, nullptr, false);
}
