#include "ui/toolkit/frm_select_file.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/file_checks.h"
#include "toolkit/file_select.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/screen_kit.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>

namespace {

QString drive_of(const QString& path)
{
    QString drive, folder, file, extension;
    Split_Path(path, drive, folder, file, extension);
    return drive;
}

void note(const QString& text)
{
    engine::MsgBox(text, engine::mb::Information, App_Title());
}

}  // namespace

frm_Select_File::frm_Select_File(QWidget* parent) : QFileDialog(parent)
{
    // Qt's own dialog, so that it looks the same everywhere and can be driven by tests.
    setOption(QFileDialog::DontUseNativeDialog, true);
    setObjectName(QStringLiteral("frm_Select_File"));
    const FileSelectRecord& request = Glob_File_Select();

    // The mode gives the caption and what the dialog lets the user choose.
    setWindowTitle(file_select::caption_of(request));
    switch (file_select::mode_of(request)) {
    case file_select::Mode::Directory:
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly, true);
        break;
    case file_select::Mode::New_File:
        setFileMode(QFileDialog::AnyFile);
        setAcceptMode(QFileDialog::AcceptSave);
        // The selector refuses an existing name itself, with its own words.
        setOption(QFileDialog::DontConfirmOverwrite, true);
        break;
    case file_select::Mode::Existing_File: setFileMode(QFileDialog::ExistingFile); break;
    }
    setLabelText(QFileDialog::Accept, QStringLiteral("&Select"));
    setLabelText(QFileDialog::Reject, QStringLiteral("&Cancel"));
    setLabelText(QFileDialog::FileType, QStringLiteral("Files of Type :"));
    setLabelText(QFileDialog::FileName, QStringLiteral("New File Name:"));

    // Activate: the filters, then the folder to start in.
    setNameFilters(file_select::name_filters(request));
    setDirectory(file_select::start_folder(request.Start_Path));
    name_controls();

    const bool new_file = file_select::mode_of(request) == file_select::Mode::New_File;
    txt_New_File->setVisible(new_file);
    lbl_New_Name->setVisible(new_file);
    if (new_file)
        txt_New_File->setFocus(Qt::OtherFocusReason);
    else
        lst_File->setFocus(Qt::OtherFocusReason);

    menu_bar = new QMenuBar(this);
    mnu_exit = menu_bar->addAction(QStringLiteral("Exit"));
    mnu_exit->setObjectName(QStringLiteral("mnu_exit"));
    mnu_Help = menu_bar->addAction(QStringLiteral("&Help"));
    mnu_Help->setObjectName(QStringLiteral("mnu_Help"));
    layout()->setMenuBar(menu_bar);
    connect(mnu_exit, &QAction::triggered, this, &frm_Select_File::cmd_Cancel_Click);
    connect(mnu_Help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Select_File); });

    colours::Rgb colour;
    Screen_Setup(this, true, colour);
    // The lists keep the ordinary look, headings included, on the green screen.
    for (QAbstractItemView* view : findChildren<QAbstractItemView*>()) {
        const QPalette standard = QApplication::palette(view);
        QPalette palette = view->palette();
        palette.setColor(QPalette::Window, standard.color(QPalette::Window));
        palette.setColor(QPalette::Button, standard.color(QPalette::Button));
        view->setPalette(palette);
    }
    resize(800, 480);
}

bool frm_Select_File::Select(QWidget* parent)
{
    frm_Select_File selector(parent);
    selector.exec();
    return !Glob_File_Select().Cancelled;
}

// The dialog's own controls take the names the program knows them by.
void frm_Select_File::name_controls()
{
    auto named = [this](const char* qt_name, const char* our_name) {
        QWidget* widget = findChild<QWidget*>(QString::fromLatin1(qt_name));
        if (widget)
            widget->setObjectName(QString::fromLatin1(our_name));
        return widget;
    };
    lst_Directory = named("lookInCombo", "lst_Directory");
    lst_File = named("listView", "lst_File");
    cmb_file_type = qobject_cast<QComboBox*>(named("fileTypeCombo", "cmb_file_type"));
    txt_New_File = qobject_cast<QLineEdit*>(named("fileNameEdit", "txt_New_File"));
    lbl_New_Name = qobject_cast<QLabel*>(named("fileNameLabel", "lbl_New_Name"));
    auto* buttons = findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    for (QAbstractButton* button : buttons->buttons()) {
        auto* push = qobject_cast<QPushButton*>(button);
        if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) {
            cmd_Select = push;
            cmd_Select->setObjectName(QStringLiteral("cmd_Select"));
        } else if (buttons->buttonRole(button) == QDialogButtonBox::RejectRole) {
            cmd_Cancel = push;
            cmd_Cancel->setObjectName(QStringLiteral("cmd_Cancel"));
        }
    }
}

QString frm_Select_File::current_folder() const
{
    return directory().absolutePath();
}

QString frm_Select_File::chosen_file() const
{
    const QStringList chosen = selectedFiles();
    if (chosen.isEmpty())
        return QString();
    const QFileInfo file(chosen.first());
    return file.isFile() ? file.fileName() : QString();
}

void frm_Select_File::accept()
{
    cmd_Select_Click();
}

void frm_Select_File::reject()
{
    cmd_Cancel_Click();
}

void frm_Select_File::cmd_Select_Click()
{
    FileSelectRecord& result = Glob_File_Select();
    const QString folder = current_folder();
    QString directory;
    QString file;
    switch (file_select::mode_of(result)) {
    case file_select::Mode::Directory: {
        // The folder highlighted in the list, or else the one on show.
        const QStringList chosen = selectedFiles();
        directory = chosen.isEmpty() || !QFileInfo(chosen.first()).isDir() ? folder : chosen.first();
        break;
    }
    case file_select::Mode::New_File: {
        QString typed = txt_New_File->text();
        // A folder typed or chosen in the box is opened, as Enter on a folder does.
        if (!typed.trimmed().isEmpty() && QFileInfo(file_select::out_path(folder, typed.trimmed())).isDir()) {
            setDirectory(file_select::out_path(folder, typed.trimmed()));
            txt_New_File->clear();
            return;
        }
        const QString existing = chosen_file();
        if (result.Name_Required && typed.trimmed().isEmpty()) {
            note(QStringLiteral("Please enter a new file"));
            return;
        }
        directory = folder;
        file = existing;
        // Without a name required, an existing file chosen in the list may be taken as it is.
        const bool took_existing = !result.Name_Required && !existing.isEmpty() && typed.trimmed() == existing;
        if (!typed.trimmed().isEmpty() && !took_existing) {
            const bool ok = file_select::Check_New_File(typed, folder, result.Extension);
            txt_New_File->setText(typed);
            if (!ok)
                return;
            file = typed;
        }
        break;
    }
    case file_select::Mode::Existing_File:
        file = chosen_file();
        if (file.isEmpty()) {
            note(QStringLiteral("Please select a file"));
            return;
        }
        directory = folder;
        break;
    }
    result.Cancelled = false;
    result.Out_Drive = drive_of(folder);
    result.Out_Directory = directory;
    result.Out_File = file;
    result.Out_Path = file_select::out_path(directory, file);
    QDialog::accept();
}

void frm_Select_File::cmd_Cancel_Click()
{
    FileSelectRecord& result = Glob_File_Select();
    result.Cancelled = true;
    result.Out_Drive = drive_of(current_folder());
    result.Out_Directory = current_folder();
    result.Out_File.clear();
    result.Out_Path.clear();
    QDialog::reject();
}
