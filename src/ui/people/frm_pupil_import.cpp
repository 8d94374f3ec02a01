#include "ui/people/frm_pupil_import.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "toolkit/file_select.h"
#include "toolkit/help_pages.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/frm_select_file.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

using namespace pupil_import;

namespace {

const QString import_extension = QStringLiteral("csv");

// The folder of the last file imported, for the file selector to start in.
QString& Last_Import_Folder()
{
    static QString folder;
    return folder;
}

void refuse(const QString& text)
{
    engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

// Where each field stands: the pupil's on the left, the family's on the
// right, and the four that show the progress on the first two rows.
struct FieldPlace {
    Field field;
    const char* name;
    const char* label;  // null: beside the one before, under its label
    int column;
    int row;
};

constexpr FieldPlace places[] = {
    {First_Name, "txt_First_Name", "Pupil First Name :", 0, 0},
    {Family_Name, "txt_Family_Name", "Family Name", 1, 0},
    {Birth_Date, "txt_BirthDate", "Date of Birth", 0, 1},
    {Start_Date, "txt_StartDate", "Start Date", 1, 1},
    {Alt_Surname, "txt_Alt_Surname", "Alternative Surname", 0, 2},
    {Gender, "txt_Gender", "Gender", 0, 3},
    {Pupil_Marker, "txt_P_Marker", "Pupil Marker", 0, 4},
    {Medical, "txt_Medical", "Medical Info", 0, 5},
    {Special_Needs, "txt_Special", "Special Needs", 0, 6},
    {E_Mail, "txt_E_Mail", "E-mail", 0, 7},
    {Ethnicity, "txt_Ethnicity", "Ethnicity", 0, 8},
    {Regn_Fee, "txt_Regn_Fee", "Registration", 0, 9},
    {Pupil_Notes, "txt_Pupil_Notes", "Pupil Notes", 0, 10},
    {Ref1, "txt_Ref1", "Official References", 0, 11},
    {Ref2, "txt_Ref2", nullptr, 0, 11},
    {Ref3, "txt_Ref3", nullptr, 0, 11},
    {Ref4, "txt_Ref4", nullptr, 0, 11},
    {Address1, "txt_Address", "Address 1", 1, 2},
    {Address2, "txt_Address2", "Address 2", 1, 3},
    {Address3, "txt_Address3", "Address 3", 1, 4},
    {Address4, "txt_Address4", "Address 4", 1, 5},
    {Post_Code, "txt_PostCode", "Post Code", 1, 6},
    {Phone_1, "txt_Phone_1", "Phone 1", 1, 7},
    {Phone_2, "txt_Phone_2", "Phone 2", 1, 8},
    {Family_Notes, "txt_Notes", "Family Notes", 1, 9},
    {Family_Marker, "txt_F_Marker", "Family Marker", 1, 10},
    {Correspondence, "txt_Correspondence", "Write to", 1, 11},
};

bool follows_progress(Field field)
{
    return field == First_Name || field == Family_Name || field == Birth_Date || field == Start_Date;
}

}  // namespace

frm_Pupil_Import::frm_Pupil_Import(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Pupil_Import"));
    setWindowTitle(QStringLiteral("Import Pupil Details"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    txt_Status->clear();
    Show_Fields(false);
}

frm_Pupil_Import::~frm_Pupil_Import() = default;

// ---- Construction ----

void frm_Pupil_Import::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;
    mnu_view_log = add_menu_before_help(menu, QStringLiteral("mnu_view_log"), QStringLiteral("&View Log"));

    // The file to read.
    auto* file_row = new QHBoxLayout;
    txt_File_Name = new QLineEdit(this);
    txt_File_Name->setObjectName(QStringLiteral("txt_File_Name"));
    txt_File_Name->setMinimumWidth(txt_File_Name->fontMetrics().averageCharWidth() * 40);
    auto* file_label = new QLabel(QStringLiteral("File Name :"), this);
    file_label->setBuddy(txt_File_Name);
    cmd_Select = make_button(this, QStringLiteral("cmd_Select"), QStringLiteral("Display &Files"));
    file_row->addWidget(file_label);
    file_row->addWidget(txt_File_Name, 1);
    file_row->addWidget(cmd_Select);
    layout->addLayout(file_row);

    // The fields of a line: shown whole for the first line, four of them as the import goes.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    QHBoxLayout* references = nullptr;
    for (const FieldPlace& place : places) {
        auto* box = new QLineEdit(this);
        box->setObjectName(QString::fromLatin1(place.name));
        box->setReadOnly(true);
        box->setFocusPolicy(Qt::NoFocus);
        fields_[place.field] = box;
        const bool reference = place.field >= Ref1 && place.field <= Ref4;
        if (place.label) {
            auto* label = new QLabel(QString::fromLatin1(place.label), this);
            label->setBuddy(box);
            labels_[place.field] = label;
            grid->addWidget(label, place.row, place.column * 2, Qt::AlignRight | Qt::AlignVCenter);
        } else {
            box->setAccessibleName(QStringLiteral("Official References %1").arg(place.field - Ref1 + 1));
        }
        if (reference) {
            // The four references side by side in the width of one field.
            box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 6);
            if (!references) {
                references = new QHBoxLayout;
                references->setSpacing(4);
                grid->addLayout(references, place.row, place.column * 2 + 1);
            }
            references->addWidget(box, 1);
        } else {
            box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 16);
            grid->addWidget(box, place.row, place.column * 2 + 1);
        }
    }
    txt_First_Name = fields_[First_Name];
    txt_Family_Name = fields_[Family_Name];
    txt_Alt_Surname = fields_[Alt_Surname];
    txt_BirthDate = fields_[Birth_Date];
    txt_Gender = fields_[Gender];
    txt_P_Marker = fields_[Pupil_Marker];
    txt_Medical = fields_[Medical];
    txt_Special = fields_[Special_Needs];
    txt_E_Mail = fields_[E_Mail];
    txt_Ethnicity = fields_[Ethnicity];
    txt_Pupil_Notes = fields_[Pupil_Notes];
    txt_Ref1 = fields_[Ref1];
    txt_Ref2 = fields_[Ref2];
    txt_Ref3 = fields_[Ref3];
    txt_Ref4 = fields_[Ref4];
    txt_StartDate = fields_[Start_Date];
    txt_Regn_Fee = fields_[Regn_Fee];
    txt_Address = fields_[Address1];
    txt_Address2 = fields_[Address2];
    txt_Address3 = fields_[Address3];
    txt_Address4 = fields_[Address4];
    txt_PostCode = fields_[Post_Code];
    txt_Phone_1 = fields_[Phone_1];
    txt_Phone_2 = fields_[Phone_2];
    txt_Notes = fields_[Family_Notes];
    txt_F_Marker = fields_[Family_Marker];
    txt_Correspondence = fields_[Correspondence];
    layout->addLayout(grid);
    layout->addStretch(1);

    auto* commands = new QHBoxLayout;
    commands->addStretch(1);
    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add Pupils"));
    cmd_Cancel = make_button(this, QStringLiteral("cmd_Cancel"), QStringLiteral("&Cancel"));
    for (QPushButton* button : {cmd_Add, cmd_Cancel}) {
        button->setAutoDefault(true);
        commands->addWidget(button);
    }
    // Nothing to cancel until an import runs.
    cmd_Cancel->setEnabled(false);
    layout->addLayout(commands);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    Enter_To_Tab(txt_File_Name);
    setTabOrder(txt_File_Name, cmd_Select);
    setTabOrder(cmd_Select, cmd_Add);
    setTabOrder(cmd_Add, cmd_Cancel);

    connect(cmd_Select, &QPushButton::clicked, this, &frm_Pupil_Import::cmd_Select_Click);
    connect(cmd_Add, &QPushButton::clicked, this, &frm_Pupil_Import::cmd_Add_Click);
    connect(cmd_Cancel, &QPushButton::clicked, this, &frm_Pupil_Import::cmd_Cancel_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Pupil_Import::mnu_Exit_Click);
    connect(mnu_view_log, &QAction::triggered, this, &frm_Pupil_Import::mnu_view_log_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Pupil_Import::mnu_Help_Click);
}

// ---- Events ----

void frm_Pupil_Import::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    event->accept();
}

// ---- The fields ----

void frm_Pupil_Import::Show_Fields(bool show_all, const Record* record)
{
    for (int field = 0; field < Field_Count; ++field) {
        const bool shown = show_all || follows_progress(static_cast<Field>(field));
        fields_[field]->setVisible(shown);
        if (labels_[field])
            labels_[field]->setVisible(shown);
        if (record)
            fields_[field]->setText((*record)[field]);
    }
    if (!show_all) {
        // Back to the screen's own height once the whole line has been looked at.
        layout()->activate();
        resize(width(), sizeHint().height());
    }
}

// ---- Commands ----

void frm_Pupil_Import::cmd_Select_Click()
{
    FileSelectRecord& request = Glob_File_Select();
    request = FileSelectRecord{};
    const QString chosen = txt_File_Name->text().trimmed();
    if (!Last_Import_Folder().isEmpty())
        request.Start_Path = Last_Import_Folder();
    else
        request.Start_Path = chosen.isEmpty() ? QDir::homePath() : chosen;
    request.Filters[0] = {QStringLiteral("Pupil Import Files (*.") + import_extension + QLatin1Char(')'),
                          QStringLiteral("*.") + import_extension};
    // Shown as "All Files (*)": every file, those without an extension too.
    request.Filters[1] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Extension = import_extension;
    if (frm_Select_File::Select(this))
        txt_File_Name->setText(request.Out_Path);
    else
        txt_File_Name->clear();
}

void frm_Pupil_Import::cmd_Add_Click()
{
    const QString file_name = txt_File_Name->text().trimmed();
    if (file_name.isEmpty()) {
        refuse(QStringLiteral("Please choose a file to read pupils from"));
        return;
    }
    Last_Import_Folder() = QFileInfo(file_name).absolutePath();
    txt_Status->clear();
    cmd_Add->setEnabled(false);
    cmd_Cancel->setEnabled(true);

    ImportHooks hooks;
    hooks.first_record = [this](const Record& record) {
        Show_Fields(true, &record);
        txt_Status->setText(QStringLiteral("Check that the record has been read correctly"));
        const HeaderAnswer answer = Ask_Header_Question();
        Show_Fields(false);
        txt_Status->clear();
        wait_ = std::make_unique<HourGlass>();
        return answer;
    };
    hooks.refused = [](const QString& message) { return Import_Error(message); };
    hooks.processing = [this](const Record& record) {
        for (Field field : {First_Name, Family_Name, Birth_Date, Start_Date})
            fields_[field]->setText(record[field]);
    };
    // Lets the screen redraw and a Cancel be pressed.
    hooks.between_records = [] { QCoreApplication::processEvents(); };
    outcome_ = import_.run(file_name, hooks);

    wait_.reset();
    txt_Status->setText(outcome_.status);
    cmd_Add->setEnabled(true);
    cmd_Cancel->setEnabled(false);
}

void frm_Pupil_Import::cmd_Cancel_Click()
{
    const int answer = engine::MsgBox(QStringLiteral("Do you wish to stop processing?"),
                                      engine::mb::YesNo | engine::mb::Question, App_Title());
    if (answer == engine::answer::Yes)
        import_.Import_Stop = true;
}

bool frm_Pupil_Import::not_running()
{
    if (!import_.Import_Running)
        return true;
    refuse(QStringLiteral("Cannot exit yet, still processing ") + QStringLiteral("a file") + QLatin1Char('\n')
           + QStringLiteral("Press Cancel to stop"));
    return false;
}

void frm_Pupil_Import::mnu_Exit_Click()
{
    if (not_running())
        Switch_Screen(this, nullptr, false);
}

void frm_Pupil_Import::mnu_view_log_Click()
{
    if (not_running())
        Go_To_Screen(this, QStringLiteral("frm_auditlog"));
}

void frm_Pupil_Import::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Pupil_Import);
}
