#include "ui/exams/frm_exam_times.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/locale_formats.h"
#include "toolkit/help_pages.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/toolkit/text_box_grid_widget.h"

#include <QAction>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int results_headers = 9;
constexpr int results_elements = 99;

// Each column's width in characters, and its share of the room to spare.
const int column_characters[results_headers] = {24, 15, 13, 6, 6, 6, 16, 14, 0};
const int column_stretch[results_headers] = {3, 2, 0, 0, 0, 0, 2, 1, 0};

}  // namespace

frm_ExamTimes::frm_ExamTimes(QWidget* parent)
    : QWidget(parent, Qt::Window), txg(new TextBoxGridWidget(results_headers, results_elements, this)),
      results_(txg->grid())
{
    setObjectName(QStringLiteral("frm_ExamTimes"));
    setWindowTitle(QStringLiteral("Activity Times and Results"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    txt_Status->clear();
    connect_controls();
    Setup_Controls();
}

frm_ExamTimes::~frm_ExamTimes()
{
    DBG_Dates->set_recordset(nullptr);
    results_.Close();
}

// ---- Construction ----

void frm_ExamTimes::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    // The dates at the left; the pupils of the date chosen at the right.
    auto* dates = new QVBoxLayout;
    dates->setSpacing(4);
    DBG_Dates_Caption = bold_caption(QStringLiteral("Activity Dates"), this);
    DBG_Dates = new DataGrid(this);
    DBG_Dates->setObjectName(QStringLiteral("DBG_Dates"));
    DBG_Dates->setAccessibleName(DBG_Dates_Caption->text());
    DBG_Dates->setSelectionMode(QAbstractItemView::SingleSelection);
    DBG_Dates->verticalHeader()->hide();
    DBG_Dates->setMinimumSize(fontMetrics().averageCharWidth() * 34, fontMetrics().height() * 12);
    DBG_Dates_Caption->setBuddy(DBG_Dates);
    dates->addWidget(DBG_Dates_Caption);
    dates->addWidget(DBG_Dates, 1);

    auto* grid = new QVBoxLayout;
    grid->setSpacing(6);
    txg->setObjectName(QStringLiteral("txg_Results"));
    for (int i = 0; i < results_headers; ++i)
        txg->set_column_width(i, column_characters[i], column_stretch[i]);
    for (QLineEdit* element : txg->txg_Element)
        element->setAccessibleName(QStringLiteral("Results"));
    grid->addWidget(txg);
    auto* commands = new QHBoxLayout;
    cmd_Teachers = make_button(this, QStringLiteral("cmd_Teachers"), QStringLiteral("&Reset Teachers"));
    cmd_Update = make_button(this, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    commands->addWidget(cmd_Teachers);
    commands->addStretch(1);
    commands->addWidget(cmd_Update);
    grid->addLayout(commands);
    grid->addStretch(1);

    auto* body = new QHBoxLayout;
    body->setSpacing(14);
    body->addLayout(dates, 1);
    body->addLayout(grid, 4);
    layout->addLayout(body, 1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    setTabOrder(DBG_Dates, txg->txg_Element.first());
    setTabOrder(txg->txg_Element.last(), cmd_Teachers);
    setTabOrder(cmd_Teachers, cmd_Update);
    resize(minimumSizeHint().expandedTo(QSize(1240, 0)));
}

void frm_ExamTimes::connect_controls()
{
    connect(cmd_Update, &QPushButton::clicked, this, &frm_ExamTimes::cmd_Update_Click);
    connect(cmd_Teachers, &QPushButton::clicked, this, &frm_ExamTimes::cmd_Teachers_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_ExamTimes::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_ExamTimes::mnu_Help_Click);
    connect(DBG_Dates, &DataGrid::RowColChange, this, &frm_ExamTimes::DBG_Dates_RowColChange);
    connect(txg, &TextBoxGridWidget::Element_LostFocus, this, &frm_ExamTimes::element_left);
}

void frm_ExamTimes::Setup_Controls()
{
    results_.Initialise();
    if (!results_.Setup_Controls())
        return;
    DBG_Dates->set_recordset(results_.dates());
    DBG_Dates->set_columns({QStringLiteral("ActT_Date"), QStringLiteral("ActT_Title")},
                           {QStringLiteral("Date"), QStringLiteral("Title")});
    DBG_Dates->set_column_picture(0, Glob_Date_Format());
    DBG_Dates->horizontalHeader()->setStretchLastSection(true);
    // The newest date is shown first.
    engine::Recordset* dates = results_.dates();
    if (dates->RecordCount() > 0 && dates->MoveFirst())
        DBG_Dates->set_Bookmark(dates->bookmark());
}

// ---- The dates ----

bool frm_ExamTimes::date_chosen() const
{
    return !DBG_Dates->SelBookmarks().isEmpty();
}

void frm_ExamTimes::DBG_Dates_RowColChange()
{
    const engine::Bookmark mark = DBG_Dates->Bookmark();
    engine::Recordset* dates = results_.dates();
    if (!dates || mark < 0 || !dates->set_bookmark(mark))
        return;
    if (!date_chosen())
        DBG_Dates->selectRow(DBG_Dates->currentIndex().row());
    results_.Get_Register(date_chosen());
    show_status();
}

void frm_ExamTimes::show_status()
{
    txt_Status->setText(results_.status);
}

// ---- Editing ----

void frm_ExamTimes::element_left(int element)
{
    if (results_.Element_Left(element, txg->txg_Element[element]->text()))
        return;
    // Refused: the old text is back, and the cell is to be typed in again.
    QLineEdit* cell = txg->txg_Element[element];
    QTimer::singleShot(0, cell, [cell] { cell->setFocus(Qt::OtherFocusReason); });
}

// ---- The commands ----

void frm_ExamTimes::cmd_Update_Click()
{
    results_.status = QStringLiteral("beginning the update");
    show_status();
    results_.cmd_Update(date_chosen());
    show_status();
}

void frm_ExamTimes::cmd_Teachers_Click()
{
    results_.cmd_Teachers(date_chosen());
    show_status();
}

void frm_ExamTimes::mnu_Exit_Click()
{
    if (results_.has_changes()) {
        const int answer = engine::MsgBox(QStringLiteral("There are unsaved changes.\nDo you wish to save them?"),
                                          engine::mb::YesNo | engine::mb::Question, App_Title());
        if (answer == engine::answer::Yes)
            cmd_Update_Click();
    }
    Switch_Screen(this, nullptr, false);
}

void frm_ExamTimes::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Activity_Results);
}

void frm_ExamTimes::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    DBG_Dates->set_recordset(nullptr);
    results_.Close();
    event->accept();
}
