#include "ui/calendar/frm_dates.h"

#include "calendar/calendar_db.h"
#include "calendar/calendar_words.h"
#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "toolkit/help_pages.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const char* const weekday_names[term_grid::Days] = {"Sunday", "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};

colours::Rgb rgb(unsigned colour)
{
    return {int((colour >> 16) & 0xFF), int((colour >> 8) & 0xFF), int(colour & 0xFF)};
}

QString long_date(QDate day)
{
    return vb::Format(engine::make_datetime(day), Glob_Date_Format());
}

// A box's date: false for text that is no date or can't be converted.
bool box_date(const QLineEdit* field, QDate& day)
{
    const QString text = field->text();
    QDateTime value;
    if (!vb::IsDate(text) || !vb::CDate(text, value)) {
        engine::Err().Clear();
        return false;
    }
    day = value.date();
    return true;
}

bool is_blank(const QLineEdit* field)
{
    return field->text().trimmed().isEmpty();
}

QLineEdit* make_box(QWidget* parent, const QString& name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

}  // namespace

frm_Dates::frm_Dates(QWidget* parent)
    : QWidget(parent, Qt::Window), data_(QStringLiteral("data_Dates"), QStringLiteral("Unexpected error "), calendar_tag())
{
    setObjectName(QStringLiteral("frm_Dates"));
    setWindowTitle(QStringLiteral("Term Dates"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    Clear_Screen();
    data_.set_on_reposition([this] { data_Dates_Reposition(); });
    data_.Refresh(Current_Db(), QStringLiteral("Qry_Select_Terms"));
}

frm_Dates::~frm_Dates()
{
    data_.Close();
}

// ---- Construction ----

void frm_Dates::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;
    mnu_Clear = add_menu_before_help(menu, QStringLiteral("mnu_Clear"), QStringLiteral("&Clear"));

    // The term's fields: the list of terms and the name on the first line,
    // the dates and the invoice count on the second.
    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(8);
    fields->setVerticalSpacing(6);
    cmb_Name = new QComboBox(this);
    cmb_Name->setObjectName(QStringLiteral("cmb_Name"));
    cmb_Name->setMinimumContentsLength(16);
    cmb_Name->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmb_Name->setMaxVisibleItems(20);
    cmb_Name->setToolTip(QStringLiteral("Choose a term to show"));
    cmb_Name->setAccessibleName(QStringLiteral("Choose a term to show"));
    txt_Term_Name = make_box(this, QStringLiteral("txt_Term_Name"));
    txt_Term_id = make_box(this, QStringLiteral("txt_Term_id"));
    txt_Term_id->hide();
    txt_Start_Date = make_box(this, QStringLiteral("txt_Start_Date"));
    txt_End_Date = make_box(this, QStringLiteral("txt_End_Date"));
    txt_Num_Invoices = make_box(this, QStringLiteral("txt_Num_Invoices"));
    txt_Num_Invoices->setReadOnly(true);
    txt_Num_Invoices->setFocusPolicy(Qt::NoFocus);
    txt_Num_Invoices->setMaximumWidth(txt_Num_Invoices->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16);
    // The list of terms and the two dates line up, one width for all three.
    const int date_width = std::max(txt_Start_Date->fontMetrics().horizontalAdvance(QStringLiteral("00 Wwww 00000")) + 16,
                                    cmb_Name->sizeHint().width());
    for (QWidget* field : std::initializer_list<QWidget*>{cmb_Name, txt_Start_Date, txt_End_Date})
        field->setFixedWidth(date_width);
    const auto label = [this](const QString& text, QWidget* buddy) {
        auto* caption = new QLabel(text, this);
        caption->setBuddy(buddy);
        return caption;
    };
    fields->addWidget(cmb_Name, 0, 1);  // over the start date, both about a date wide
    fields->addWidget(label(QStringLiteral("Name :"), txt_Term_Name), 0, 2, Qt::AlignRight);
    fields->addWidget(txt_Term_Name, 0, 3, 1, 4);
    fields->addWidget(label(QStringLiteral("Start:"), txt_Start_Date), 1, 0, Qt::AlignRight);
    fields->addWidget(txt_Start_Date, 1, 1);
    fields->addWidget(label(QStringLiteral("End :"), txt_End_Date), 1, 2, Qt::AlignRight);
    fields->addWidget(txt_End_Date, 1, 3);
    fields->addWidget(label(QStringLiteral("Invoices using this term:"), txt_Num_Invoices), 1, 4, Qt::AlignRight);
    fields->addWidget(txt_Num_Invoices, 1, 5);
    fields->setColumnStretch(6, 1);  // the room to spare goes to the right
    layout->addLayout(fields);

    // The calendar: weekday headers, 16 weeks of cells, the totals below.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2);
    grid->setVerticalSpacing(2);
    const int cell_width = fontMetrics().horizontalAdvance(QStringLiteral("00 Www 00000")) + 14;
    const int cell_height = fontMetrics().height() + 6;
    for (int day = 0; day < term_grid::Days; ++day) {
        QLabel* header = new QLabel(QString::fromLatin1(weekday_names[day]), this);
        header->setObjectName(QStringLiteral("txg_Hdr_%1").arg(day));
        header->setAlignment(Qt::AlignCenter);
        header->setMinimumSize(cell_width, cell_height);
        QFont bold = header->font();
        bold.setBold(true);
        header->setFont(bold);
        set_frame_colour(header, rgb(calendar_colour::Header));
        QPalette palette = header->palette();
        palette.setColor(QPalette::WindowText, Qt::white);  // readable on the dark green
        header->setPalette(palette);
        txg_Hdr[day] = header;
        grid->addWidget(header, 0, day + 1);
        grid->setColumnStretch(day + 1, 1);
    }
    for (int n = 0; n < term_grid::Cells; ++n) {
        auto* cell = new QLabel(this);
        cell->setObjectName(QStringLiteral("txg_Element_%1").arg(n));
        cell->setAlignment(Qt::AlignCenter);
        cell->setFrameShape(QFrame::Box);
        cell->setMinimumSize(cell_width, cell_height);
        cell->setCursor(Qt::PointingHandCursor);
        cell->installEventFilter(this);
        txg_Element[n] = cell;
        grid->addWidget(cell, 1 + n / term_grid::Days, 1 + n % term_grid::Days);
    }
    const int totals_row = 1 + term_grid::Weeks;
    auto* totals_label = new QLabel(QStringLiteral("Totals :"), this);
    grid->addWidget(totals_label, totals_row, 0, Qt::AlignRight);
    for (int day = 0; day < term_grid::Days; ++day) {
        QLineEdit* total = make_box(this, QStringLiteral("txt_Total_%1").arg(day));
        total->setReadOnly(true);
        total->setFocusPolicy(Qt::NoFocus);
        total->setAlignment(Qt::AlignCenter);
        QFont bold = total->font();
        bold.setBold(true);
        total->setFont(bold);
        total->setAccessibleName(QStringLiteral("%1 total").arg(QString::fromLatin1(weekday_names[day])));
        txt_Total[day] = total;
        grid->addWidget(total, totals_row, day + 1);
    }
    grid->setRowMinimumHeight(totals_row, cell_height + 8);
    layout->addLayout(grid, 1);

    auto* commands = new QHBoxLayout;
    commands->addStretch(1);
    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add New"));
    cmd_Delete = make_button(this, QStringLiteral("cmd_Delete"), QStringLiteral("&Delete"));
    cmd_Save = make_button(this, QStringLiteral("cmd_Save"), QStringLiteral("&Update"));
    for (QPushButton* button : {cmd_Add, cmd_Delete, cmd_Save})
        commands->addWidget(button);
    layout->addLayout(commands);

    // Enter moves on as Tab does; leaving a field runs its check.
    for (QLineEdit* field : {txt_Term_Name, txt_Start_Date, txt_End_Date}) {
        Enter_To_Tab(field);
        field->installEventFilter(this);
    }
    setTabOrder(txt_Term_Name, txt_Start_Date);
    setTabOrder(txt_Start_Date, txt_End_Date);
    setTabOrder(txt_End_Date, cmd_Add);

    connect(cmd_Add, &QPushButton::clicked, this, &frm_Dates::cmd_Add_Click);
    connect(cmd_Delete, &QPushButton::clicked, this, &frm_Dates::cmd_Delete_Click);
    connect(cmd_Save, &QPushButton::clicked, this, &frm_Dates::cmd_Save_Click);
    connect(cmb_Name, &QComboBox::activated, this, &frm_Dates::cmb_Name_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Dates::mnu_Exit_Click);
    connect(mnu_Clear, &QAction::triggered, this, &frm_Dates::mnu_Clear_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Dates::mnu_Help_Click);

    // The layout keeps the window at least as large as the calendar needs.
    resize(minimumSizeHint().expandedTo(QSize(820, 640)));
}

// ---- Events ----

void frm_Dates::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous() || shown_once_)
        return;
    // The newest term, the first time the screen is on view: showing it may
    // ask to save the term, and that question belongs over this screen.
    Activate_When_Shown(this, [this] {
        if (shown_once_)
            return;
        shown_once_ = true;
        Setup_Controls();
        read_from_db(true);
    });
}

void frm_Dates::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    data_.Close();
    event->accept();
}

bool frm_Dates::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        auto* widget = static_cast<QWidget*>(watched);
        if (mouse->button() == Qt::LeftButton && widget->rect().contains(mouse->position().toPoint())) {
            for (int n = 0; n < term_grid::Cells; ++n)
                if (txg_Element[n] == watched) {
                    txg_Element_Click(n);
                    return true;
                }
        }
    } else if (event->type() == QEvent::FocusOut && !returning_focus_) {
        // A message box or a pop-up taking the focus for a moment isn't leaving the field.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            if (watched == txt_Start_Date)
                Start_Date_Left();
            else if (watched == txt_End_Date)
                End_Date_Left();
            else if (watched == txt_Term_Name)
                Term_Name_Left();
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frm_Dates::focus_back(QLineEdit* field)
{
    returning_focus_ = true;
    QTimer::singleShot(0, this, [this, field] {
        field->setFocus(Qt::OtherFocusReason);
        returning_focus_ = false;
    });
}

// ---- Between the widgets and the calendar ----

void frm_Dates::show_cell(int n)
{
    txg_Element[n]->setText(calendar_.cell_text(n));
    set_frame_colour(txg_Element[n], rgb(calendar_.cell_colour(n)));
}

void frm_Dates::show_totals()
{
    for (int day = 0; day < term_grid::Days; ++day) {
        txt_Total[day]->setText(QString::number(calendar_.total(day)));
        set_field_colour(txt_Total[day], rgb(calendar_.total_colour(day)));
    }
}

void frm_Dates::show_calendar()
{
    for (int n = 0; n < term_grid::Cells; ++n)
        show_cell(n);
    show_totals();
    txt_Term_id->setText(calendar_.boxes.term_id);
    txt_Term_Name->setText(calendar_.boxes.name);
    txt_Start_Date->setText(calendar_.boxes.start);
    txt_End_Date->setText(calendar_.boxes.end);
    txt_Num_Invoices->setText(calendar_.boxes.num_invoices);
}

void frm_Dates::boxes_to_calendar()
{
    calendar_.boxes.term_id = txt_Term_id->text();
    calendar_.boxes.name = txt_Term_Name->text();
    calendar_.boxes.start = txt_Start_Date->text();
    calendar_.boxes.end = txt_End_Date->text();
    calendar_.boxes.num_invoices = txt_Num_Invoices->text();
}

void frm_Dates::Clear_Screen()
{
    calendar_.Clear_Screen();
    show_calendar();
    // A blank screen is no stored term: the list names none.
    cmb_Name->setCurrentIndex(-1);
}

// ---- The record set ----

void frm_Dates::Setup_Controls()
{
    cmb_Name->clear();
    engine::Recordset* terms = data_.Recordset();
    if (!terms || data_.is_empty())
        return;
    std::unique_ptr<engine::Recordset> clone = terms->Clone();
    if (!clone || !clone->MoveFirst()) {
        report_unexpected(QStringLiteral("Setup_Controls"));
        return;
    }
    // Newest first, in the record set's own order.
    while (!clone->at_eof()) {
        cmb_Name->addItem(clone->Fields(QStringLiteral("Term_Name")).toString(),
                          clone->Fields(QStringLiteral("Term_id")).toInt());
        if (!clone->MoveNext())
            break;
    }
    clone->Close();
    engine::Err().Clear();
    data_Dates_Reposition();
}

void frm_Dates::data_Dates_Reposition()
{
    engine::Recordset* terms = data_.Recordset();
    if (!terms || terms->at_bof() || terms->at_eof()) {
        cmb_Name->setCurrentIndex(-1);
        return;
    }
    cmb_Name->setCurrentIndex(Glob_Search_Combo(cmb_Name, terms->Fields(QStringLiteral("Term_id")).toInt()));
    engine::Err().Clear();
}

void frm_Dates::Refresh_Recordset()
{
    if (!data_.Refresh(Current_Db(), QStringLiteral("Qry_Select_Terms")))
        return;
    Setup_Controls();
    read_from_db(true);
}

void frm_Dates::read_from_db(bool first_record)
{
    if (data_.is_empty()) {
        Clear_Screen();
        return;
    }
    if (first_record && !data_.MoveFirst()) {
        report_unexpected(QStringLiteral("read_from_db"));
        return;
    }
    engine::Recordset* terms = data_.Recordset();
    if (terms->at_bof() || terms->at_eof()) {
        Clear_Screen();
        return;
    }
    bool totals_match = true;
    if (!calendar_.load_term(terms->Fields(QStringLiteral("Term_id")).toInt(), totals_match)) {
        show_calendar();
        return;
    }
    show_calendar();
    if (!totals_match
        && App_Yes(QStringLiteral("The database is out of date and MUST be saved to ensure correct operation.") + QLatin1Char('\n')
               + QStringLiteral("Save Now?")))
        cmd_Save_Click();
}

// ---- The fields ----

void frm_Dates::fill_from_boxes(QDate start, QDate end)
{
    calendar_.Fill_Grid(start, end);
    for (int n = 0; n < term_grid::Cells; ++n)
        show_cell(n);
    show_totals();
    txt_Start_Date->setText(long_date(start));
    txt_End_Date->setText(long_date(end));
}

void frm_Dates::Start_Date_Left()
{
    if (is_blank(txt_Start_Date))
        return;
    QDate start;
    if (!box_date(txt_Start_Date, start)) {
        App_Box(QStringLiteral("Invalid start date"));
        focus_back(txt_Start_Date);
        return;
    }
    QDate end;
    if (is_blank(txt_End_Date)) {
        end = start.addDays(14 * 7);
        calendar_.set_default_end_date(end);
    } else if (!box_date(txt_End_Date, end)) {
        App_Box(QStringLiteral("Invalid end date"));
        focus_back(txt_End_Date);
        return;
    }
    fill_from_boxes(start, end);
}

void frm_Dates::End_Date_Left()
{
    if (is_blank(txt_End_Date))
        return;
    QDate end;
    if (!box_date(txt_End_Date, end)) {
        App_Box(QStringLiteral("Invalid end date"));
        focus_back(txt_End_Date);
        return;
    }
    if (is_blank(txt_Start_Date))
        return;
    QDate start;
    if (!box_date(txt_Start_Date, start)) {
        App_Box(QStringLiteral("Invalid start date"));
        focus_back(txt_Start_Date);
        return;
    }
    fill_from_boxes(start, end);
}

void frm_Dates::Term_Name_Left()
{
    if (txt_Term_Name->text().contains(QLatin1Char('"'))) {
        App_Box(QStringLiteral("Term Names cannot include quotes"));
        focus_back(txt_Term_Name);
    }
}

void frm_Dates::txg_Element_Click(int n)
{
    if (n < 0 || n >= term_grid::Cells || !calendar_.cell(n).date.isValid())
        return;
    calendar_.click_cell(n);
    show_cell(n);
    show_totals();
}

// ---- The commands ----

void frm_Dates::cmb_Name_Click()
{
    const int index = cmb_Name->currentIndex();
    if (index < 0)
        return;
    if (!data_.FindFirst(QStringLiteral("Term_id = ") + QString::number(cmb_Name->itemData(index).toInt()))
        || data_.NoMatch()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error changing Term_Dates"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("cmb_Name_Click"));
        return;
    }
    read_from_db(false);
}

void frm_Dates::cmd_Add_Click()
{
    if (!Check_OK_To_Exit())
        return;
    Clear_Screen();
    txt_Start_Date->setFocus(Qt::OtherFocusReason);
}

void frm_Dates::mnu_Clear_Click()
{
    if (Check_OK_To_Exit())
        Clear_Screen();
}

void frm_Dates::mnu_Exit_Click()
{
    if (Check_OK_To_Exit())
        Switch_Screen(this, nullptr, false);
}

void frm_Dates::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Term_Dates);
}

void frm_Dates::cmd_Save_Click()
{
    if (is_blank(txt_Term_Name)) {
        App_Box(QStringLiteral("Please enter a name for the term"));
        txt_Term_Name->setFocus(Qt::OtherFocusReason);
        return;
    }
    QDate start;
    if (is_blank(txt_Start_Date) || !box_date(txt_Start_Date, start)) {
        App_Box(QStringLiteral("Please enter a start date"));
        txt_Start_Date->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (is_blank(txt_End_Date) && calendar_.default_end_date().isValid())
        txt_End_Date->setText(long_date(calendar_.default_end_date()));
    QDate end;
    if (!box_date(txt_End_Date, end)) {
        App_Box(QStringLiteral("Please enter an end date"));
        txt_End_Date->setFocus(Qt::OtherFocusReason);
        return;
    }
    // The grid may have refused these dates when they were typed; they are
    // refused here as well, or the term would be stored without lessons.
    const QString refusal = Term_Dates_Refusal(start, end);
    if (!refusal.isEmpty()) {
        App_Box(refusal);
        txt_End_Date->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (!is_blank(txt_Num_Invoices) && txt_Num_Invoices->text().trimmed().toInt() >= 1)
        App_Box(QStringLiteral("You are making changes to a term that already has invoices. ") + QLatin1Char('\n')
                + QStringLiteral("Please remember to re-run the automated invoicing to change the invoices."),
            engine::mb::Information);
    boxes_to_calendar();
    if (!calendar_.Save_Term())
        return;  // the screen keeps what the user typed
    for (int n = 0; n < term_grid::Cells; ++n)
        show_cell(n);
    show_totals();
    txt_Term_id->setText(calendar_.boxes.term_id);
    // Back to the stored term, with the list showing any new or renamed one.
    if (!data_.Requery()) {
        report_unexpected(QStringLiteral("cmd_Save_Click"));
        return;
    }
    Setup_Controls();
    if (!data_.FindFirst(QStringLiteral("Term_id = ") + calendar_.boxes.term_id) || data_.NoMatch())
        Report_Error(report::Detected, QStringLiteral("Unexpected error writing to Term_Dates"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("Couldn't reposition after insert"));
}

void frm_Dates::cmd_Delete_Click()
{
    engine::Recordset* terms = data_.Recordset();
    if (!terms || terms->at_eof()) {
        App_Box(QStringLiteral("There are no more term dates"));
        return;
    }
    if (is_blank(txt_Term_id)) {
        App_Box(QStringLiteral("These dates have not yet been saved to the database, so cannot be deleted."));
        return;
    }
    const QString name = txt_Term_Name->text();
    if (!App_Yes(QStringLiteral("Do you wish to DELETE term ") + name + QStringLiteral(" from the database?")))
        return;
    if (!DB_Delete_Term(txt_Term_id->text().trimmed().toInt()))
        return;
    App_Box(QStringLiteral("Term ") + name + QStringLiteral(" successfully deleted"), engine::mb::Information);
    Refresh_Recordset();
}

bool frm_Dates::Check_OK_To_Exit()
{
    QString text;
    bool unsaved = false;
    if (!is_blank(txt_Term_id)) {
        engine::Recordset* terms = data_.Recordset();
        if (!terms || terms->at_bof() || terms->at_eof()) {
            Report_Error(report::Unexpected, QStringLiteral("Unexpected error exiting from Term_Dates"),
                         engine::mb::Critical, calendar_tag(), QStringLiteral("Check_OK_To_Exit"));
            return true;
        }
        const bool totals_match = calendar_.Check_Totals(txt_Term_id->text().trimmed().toInt());
        show_totals();
        if (!totals_match)
            text = QStringLiteral(
                "You have changed holidays, which have changed the Totals. The Totals are VITAL.  If you dont SAVE, the "
                "database will be out of step and your invoices will be calculated incorrectly!");
        if (txt_Term_Name->text() != terms->Fields(QStringLiteral("Term_Name")).toString())
            text += QStringLiteral(" The name has changed.");
        // A box that no longer holds a date has changed as well.
        QDate day;
        if (!is_blank(txt_Start_Date)
            && (!box_date(txt_Start_Date, day) || day != terms->Fields(QStringLiteral("Term_Start")).toDateTime().date()))
            text += QStringLiteral(" The Start Date has changed.");
        if (!is_blank(txt_End_Date)
            && (!box_date(txt_End_Date, day) || day != terms->Fields(QStringLiteral("Term_End")).toDateTime().date()))
            text += QStringLiteral(" The End Date has changed.");
        engine::Err().Clear();
        unsaved = !text.isEmpty();
    } else {
        unsaved = !is_blank(txt_Start_Date) || !is_blank(txt_End_Date) || !is_blank(txt_Term_Name);
    }
    if (!unsaved)
        return true;
    if (!App_Yes(text + QStringLiteral("There are unsaved changes.") + QLatin1Char('\n') + QLatin1Char('\n')
             + QStringLiteral("Do you wish to save them now?")))
        return true;
    cmd_Save_Click();
    return false;
}

void frm_Dates::report_unexpected(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, calendar_tag(), routine);
}
