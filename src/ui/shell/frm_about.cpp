#include "ui/shell/frm_about.h"

#include "engine/settings_store.h"
#include "shell/app_globals.h"
#include "shell/settings.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/shell/switch_screen.h"

#include <QAction>
#include <QCloseEvent>
#include <QFormLayout>
#include <QLabel>
#include <QMenuBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QLabel* value_label(QWidget* parent, const QString& name, const QString& text)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Paths have no blanks to wrap at: they are shown whole, on one line.
    return label;
}

}  // namespace

frm_About::frm_About(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_About"));
    setWindowTitle(QStringLiteral("About"));
    Screen_Setup(this, true, Glob_Form_Colour());

    // The menu, the program's name in large letters, then its particulars.
    auto* layout = new QVBoxLayout(this);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout, QStringLiteral("mnu_exit"), QStringLiteral("mnu_Help"));
    menu_bar = menu.bar;
    mnu_exit = menu.exit;
    mnu_Help = menu.help;

    // The application title is the name, a blank and the short version.
    lbl_App_Name = value_label(this, QStringLiteral("lbl_App_Name"), App_Title().section(QLatin1Char(' '), 0, 0));
    QFont big = lbl_App_Name->font();
    big.setPointSizeF(big.pointSizeF() * 2);
    big.setBold(true);
    lbl_App_Name->setFont(big);
    lbl_App_Name->setAlignment(Qt::AlignCenter);
    layout->addWidget(lbl_App_Name);

    auto* details = new QFormLayout;
    details->setLabelAlignment(Qt::AlignRight);
    lbl_app_revision = value_label(this, QStringLiteral("lbl_app_revision"),
                                   QStringLiteral("%1.%2.%3")
                                       .arg(QUILLARY_VERSION_MAJOR)
                                       .arg(QUILLARY_VERSION_MINOR)
                                       .arg(QUILLARY_VERSION_PATCH));
    const QString manual = help::manual_folder();
    lbl_helpfile = value_label(this, QStringLiteral("lbl_helpfile"),
                               manual.isEmpty() ? QStringLiteral("(not installed)") : manual);
    lbl_ini_file = value_label(this, QStringLiteral("lbl_ini_file"),
                               engine::settings_store().file_name() + QStringLiteral(" [")
                                   + QString::fromLatin1(settings_key::Section) + QLatin1Char(']'));
    details->addRow(QStringLiteral("Version :"), lbl_app_revision);
    details->addRow(QStringLiteral("Help :"), lbl_helpfile);
    details->addRow(QStringLiteral("Settings :"), lbl_ini_file);
    layout->addLayout(details);
    layout->addStretch(1);

    connect(mnu_exit, &QAction::triggered, this, &frm_About::mnu_exit_Click);
    connect(mnu_Help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::About); });

    // The layout keeps the window at least as large as its words need.
    resize(minimumSizeHint().expandedTo(QSize(520, 260)));
}

void frm_About::mnu_exit_Click()
{
    Switch_Screen(this, nullptr, false);
}

void frm_About::closeEvent(QCloseEvent* event)
{
    if (!is_unloading(this)) {
        event->ignore();
        QTimer::singleShot(0, this, &frm_About::mnu_exit_Click);
        return;
    }
    event->accept();
}
