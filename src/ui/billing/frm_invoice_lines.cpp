#include "ui/billing/frm_invoice_lines.h"

#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/locale_formats.h"
#include "toolkit/help_pages.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString line_end = QStringLiteral("\n");

QString long_date(const QDateTime& value)
{
    return vb::Format(value, Glob_Date_Format());
}

// The row chosen in a list; -1 when no entry at all is chosen.
int list_index(const QListWidget* list)
{
    const QList<QListWidgetItem*> chosen = list->selectedItems();
    return chosen.isEmpty() ? -1 : list->row(chosen.first());
}

ListChoice list_choice(const QListWidget* list)
{
    const int row = list_index(list);
    if (row < 0)
        return std::nullopt;
    return list->item(row)->data(Qt::UserRole).toInt();
}

std::optional<QString> chosen_text(const QListWidget* list)
{
    const int row = list_index(list);
    if (row < 0)
        return std::nullopt;
    return list->item(row)->text();
}


QLineEdit* make_box(QWidget* parent, const QString& name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

// A box the program fills and the user only reads.
QLineEdit* make_shown_box(QWidget* parent, const QString& name)
{
    QLineEdit* edit = make_box(parent, name);
    edit->setReadOnly(true);
    edit->setFocusPolicy(Qt::NoFocus);
    return edit;
}

QListWidget* make_list(QWidget* parent, const QString& name)
{
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    return list;
}

QLabel* caption_for(QWidget* parent, const QString& text, QWidget* buddy)
{
    auto* caption = new QLabel(text, parent);
    caption->setBuddy(buddy);
    // A list has no text of its own: a screen reader names it by its caption.
    if (qobject_cast<QListWidget*>(buddy))
        buddy->setAccessibleName(text);
    return caption;
}

// A box for a short value, about `characters` wide.
void narrow(QLineEdit* edit, int characters)
{
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters + 16);
}

}  // namespace

frm_Invoice_Lines::frm_Invoice_Lines(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Invoice_Lines"));
    setWindowTitle(QStringLiteral("Invoice Lines"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    connect_controls();
    set_frame_colour(frame_status, Glob_Form_Colour());
    txt_Status->clear();
    // Until an invoice is shown, both halves stand empty and at rest.
    txt_Invoice_id->setText(QStringLiteral("0"));
    txt_Line_id->setText(QStringLiteral("0"));
    Clear_highlights();
    Clear_Line_Highlights();
}

// ---- Construction ----

void frm_Invoice_Lines::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    // The family invoiced, for reading only.
    auto* family = new QHBoxLayout;
    txt_Family_Name = make_shown_box(this, QStringLiteral("txt_Family_Name"));
    txt_Address = make_shown_box(this, QStringLiteral("txt_Address"));
    family->addWidget(caption_for(this, QStringLiteral("Family :"), txt_Family_Name));
    family->addWidget(txt_Family_Name, 1);
    family->addSpacing(16);
    family->addWidget(caption_for(this, QStringLiteral("Address :"), txt_Address));
    family->addWidget(txt_Address, 2);
    layout->addLayout(family);

    // The invoice: its texts on the left, the term or activity date on the right.
    frame_Invoice = new QGroupBox(QStringLiteral("Invoice"), this);
    frame_Invoice->setObjectName(QStringLiteral("frame_Invoice"));
    auto* invoice = new QGridLayout(frame_Invoice);
    invoice->setHorizontalSpacing(8);
    invoice->setVerticalSpacing(6);
    txt_Invoice_id = make_shown_box(frame_Invoice, QStringLiteral("txt_Invoice_id"));
    narrow(txt_Invoice_id, 8);
    txt_Date = make_box(frame_Invoice, QStringLiteral("txt_Date"));
    narrow(txt_Date, 14);
    txt_Reason = make_box(frame_Invoice, QStringLiteral("txt_Reason"));
    txt_Reason->setMinimumWidth(txt_Reason->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 30);
    txt_Notes = new QPlainTextEdit(frame_Invoice);
    txt_Notes->setObjectName(QStringLiteral("txt_Notes"));
    txt_Notes->setFixedHeight(txt_Notes->fontMetrics().lineSpacing() * 3 + 12);
    lst_Terms = make_list(frame_Invoice, QStringLiteral("lst_Terms"));
    lst_Activity_Dates = make_list(frame_Invoice, QStringLiteral("lst_Activity_Dates"));
    const auto right = Qt::AlignRight | Qt::AlignVCenter;
    invoice->addWidget(caption_for(frame_Invoice, QStringLiteral("Current Invoice :"), txt_Invoice_id), 0, 0, right);
    invoice->addWidget(txt_Invoice_id, 0, 1, Qt::AlignLeft);
    invoice->addWidget(caption_for(frame_Invoice, QStringLiteral("Invoice Date :"), txt_Date), 1, 0, right);
    invoice->addWidget(txt_Date, 1, 1, Qt::AlignLeft);
    invoice->addWidget(caption_for(frame_Invoice, QStringLiteral("Reason :"), txt_Reason), 2, 0, right);
    invoice->addWidget(txt_Reason, 2, 1);
    invoice->addWidget(caption_for(frame_Invoice, QStringLiteral("Notes :"), txt_Notes), 3, 0, Qt::AlignRight | Qt::AlignTop);
    invoice->addWidget(txt_Notes, 3, 1);
    invoice->addWidget(caption_for(frame_Invoice, QStringLiteral("Term Name :"), lst_Terms), 0, 2, Qt::AlignLeft | Qt::AlignBottom);
    invoice->addWidget(lst_Terms, 1, 2, 3, 1);
    invoice->addWidget(caption_for(frame_Invoice, QStringLiteral("Activity Date :"), lst_Activity_Dates), 0, 3,
                       Qt::AlignLeft | Qt::AlignBottom);
    invoice->addWidget(lst_Activity_Dates, 1, 3, 3, 1);
    invoice->setColumnStretch(1, 3);
    invoice->setColumnStretch(2, 2);
    invoice->setColumnStretch(3, 3);
    auto* invoice_commands = new QHBoxLayout;
    invoice_commands->addStretch(1);
    cmd_Update = make_button(frame_Invoice, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    cmd_Cancel = make_button(frame_Invoice, QStringLiteral("cmd_Cancel"), QStringLiteral("&Cancel"));
    invoice_commands->addWidget(cmd_Update);
    invoice_commands->addWidget(cmd_Cancel);
    invoice->addLayout(invoice_commands, 4, 0, 1, 4);
    layout->addWidget(frame_Invoice, 2);

    // The line: who and what on top, the money below.
    frame_Line = new QGroupBox(QStringLiteral("Invoice Line"), this);
    frame_Line->setObjectName(QStringLiteral("frame_Line"));
    auto* line = new QGridLayout(frame_Line);
    line->setHorizontalSpacing(8);
    line->setVerticalSpacing(6);
    txt_Line_id = make_shown_box(frame_Line, QStringLiteral("txt_Line_id"));
    narrow(txt_Line_id, 8);
    lst_Pupils = make_list(frame_Line, QStringLiteral("lst_Pupils"));
    lst_Courses = make_list(frame_Line, QStringLiteral("lst_Courses"));
    lst_Activities = make_list(frame_Line, QStringLiteral("lst_Activities"));
    txt_Amount = make_box(frame_Line, QStringLiteral("txt_Amount"));
    narrow(txt_Amount, 12);
    txt_Amount->setAlignment(Qt::AlignRight);
    txt_Description = make_box(frame_Line, QStringLiteral("txt_Description"));
    auto* line_id_row = new QHBoxLayout;
    line_id_row->addWidget(caption_for(frame_Line, QStringLiteral("Current Invoice Line:"), txt_Line_id));
    line_id_row->addSpacing(6);
    line_id_row->addWidget(txt_Line_id);
    line_id_row->addStretch(1);
    line->addLayout(line_id_row, 0, 0, 1, 3);
    line->addWidget(caption_for(frame_Line, QStringLiteral("Pupils in this Family:"), lst_Pupils), 1, 0);
    line->addWidget(caption_for(frame_Line, QStringLiteral("Courses taken by the selected pupil:"), lst_Courses), 1, 1);
    line->addWidget(caption_for(frame_Line, QStringLiteral("Activities taken by the selected Pupil:"), lst_Activities),
                    1, 2);
    // A family has a handful of pupils, a pupil a handful of courses: six
    // rows show them without scrolling.
    for (QListWidget* list : {lst_Pupils, lst_Courses, lst_Activities})
        list->setMinimumHeight(list->fontMetrics().lineSpacing() * 6 + 8);
    line->addWidget(lst_Pupils, 2, 0);
    line->addWidget(lst_Courses, 2, 1);
    line->addWidget(lst_Activities, 2, 2);
    line->setColumnStretch(0, 2);
    line->setColumnStretch(1, 3);
    line->setColumnStretch(2, 3);
    line->setRowStretch(2, 1);
    auto* money = new QHBoxLayout;
    money->addWidget(caption_for(frame_Line, QStringLiteral("Amount :"), txt_Amount));
    money->addWidget(txt_Amount);
    money->addSpacing(16);
    money->addWidget(caption_for(frame_Line, QStringLiteral("Description :"), txt_Description));
    money->addWidget(txt_Description, 1);
    line->addLayout(money, 3, 0, 1, 3);
    auto* line_commands = new QHBoxLayout;
    line_commands->addStretch(1);
    cmd_Add_Line = make_button(frame_Line, QStringLiteral("cmd_Add_Line"), QStringLiteral("&Add New Line"));
    cmd_Update_Line = make_button(frame_Line, QStringLiteral("cmd_Update_Line"), QStringLiteral("U&pdate Line"));
    cmd_Line_Cancel = make_button(frame_Line, QStringLiteral("cmd_Line_Cancel"), QStringLiteral("&Line Cancel"));
    for (QPushButton* button : {cmd_Add_Line, cmd_Update_Line, cmd_Line_Cancel})
        line_commands->addWidget(button);
    line->addLayout(line_commands, 4, 0, 1, 3);
    layout->addWidget(frame_Line, 3);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    setTabOrder(txt_Date, txt_Reason);
    setTabOrder(txt_Reason, txt_Notes);
    setTabOrder(txt_Notes, lst_Terms);
    setTabOrder(lst_Terms, lst_Activity_Dates);
    setTabOrder(lst_Activity_Dates, cmd_Update);
    setTabOrder(cmd_Update, cmd_Cancel);
    setTabOrder(cmd_Cancel, lst_Pupils);
    setTabOrder(lst_Pupils, lst_Courses);
    setTabOrder(lst_Courses, lst_Activities);
    setTabOrder(lst_Activities, txt_Amount);
    setTabOrder(txt_Amount, txt_Description);
    setTabOrder(txt_Description, cmd_Add_Line);
    setTabOrder(cmd_Add_Line, cmd_Update_Line);
    setTabOrder(cmd_Update_Line, cmd_Line_Cancel);

    resize(minimumSizeHint().expandedTo(QSize(900, 600)));
}

void frm_Invoice_Lines::connect_controls()
{
    // Enter moves on as Tab does; leaving a field runs its check.
    for (QWidget* field : std::initializer_list<QWidget*>{txt_Date, txt_Reason, txt_Notes, lst_Terms, lst_Activity_Dates,
                                                          lst_Pupils, lst_Courses, lst_Activities, txt_Amount,
                                                          txt_Description}) {
        Enter_To_Tab(field);
        field->installEventFilter(this);
    }
    connect(cmd_Update, &QPushButton::clicked, this, &frm_Invoice_Lines::cmd_Update_Click);
    connect(cmd_Cancel, &QPushButton::clicked, this, &frm_Invoice_Lines::cmd_Cancel_Click);
    connect(cmd_Add_Line, &QPushButton::clicked, this, &frm_Invoice_Lines::cmd_Add_Line_Click);
    connect(cmd_Update_Line, &QPushButton::clicked, this, &frm_Invoice_Lines::cmd_Update_Line_Click);
    connect(cmd_Line_Cancel, &QPushButton::clicked, this, &frm_Invoice_Lines::cmd_Line_Cancel_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Invoice_Lines::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Invoice_Lines::mnu_Help_Click);
    // A list's Click is the user's choice; the program's own fillings pass unheard.
    const auto on_click = [this](QListWidget* list, void (frm_Invoice_Lines::*handler)()) {
        connect(list, &QListWidget::itemSelectionChanged, this, [this, handler] {
            if (!filling_)
                (this->*handler)();
        });
    };
    on_click(lst_Terms, &frm_Invoice_Lines::lst_Terms_Click);
    on_click(lst_Activity_Dates, &frm_Invoice_Lines::lst_Activity_Dates_Click);
    on_click(lst_Pupils, &frm_Invoice_Lines::lst_Pupils_Click);
    on_click(lst_Courses, &frm_Invoice_Lines::lst_Courses_Click);
    on_click(lst_Activities, &frm_Invoice_Lines::lst_Activities_Click);
}

// ---- The entry ----

bool frm_Invoice_Lines::fIL_Display_Invoice(const QString& family_name, const QString& address, int family_id,
                                            int invoice_id, int line_id)
{
    family_id_ = family_id;
    if (family_id <= 0)
        return false;
    txt_Family_Name->setText(family_name);
    txt_Address->setText(address);
    Get_Terms();
    Get_Activity_Dates();
    // The family's pupils are listed whatever the line half shows, so that a
    // new line can be started on any invoice.
    Get_Pupils();
    if (invoice_id != 0) {
        txt_Invoice_id->setText(QString::number(invoice_id));
        Display_Invoice();
        if (line_id == 0) {
            cmd_Add_Line_Click();
        } else if (line_id != -1) {
            txt_Line_id->setText(QString::number(line_id));
            set_field_colour(txt_Line_id, colours::At_Rest);
            Display_Line();
        }
    } else {
        // The id first: the line's lists are for no invoice.
        txt_Invoice_id->setText(QStringLiteral("0"));
        Clear_Invoice_screen();
        Clear_Line_screen();
        set_field_colour(txt_Invoice_id, colours::At_Rest);
        Add_New();
    }
    return true;
}

// ---- States ----

bool frm_Invoice_Lines::invoice_in_progress() const
{
    return field_colour(txt_Invoice_id) == colours::Highlight;
}

bool frm_Invoice_Lines::line_in_progress() const
{
    return field_colour(txt_Line_id) == colours::Highlight;
}

int frm_Invoice_Lines::invoice_id() const
{
    return txt_Invoice_id->text().trimmed().toInt();
}

int frm_Invoice_Lines::line_id() const
{
    return txt_Line_id->text().trimmed().toInt();
}

void frm_Invoice_Lines::show_status(const QString& text)
{
    txt_Status->setText(text);
}

// ---- Reading and clearing ----

void frm_Invoice_Lines::Display_Invoice()
{
    InvoiceRecord invoice;
    bool found = false;
    if (!DB_Read_Invoice(invoice_id(), invoice, found))
        return;
    if (!found) {
        Clear_Invoice_screen();
        return;
    }
    txt_Date->setText(long_date(invoice.invoice_date));
    txt_Reason->setText(invoice.reason);
    txt_Notes->setPlainText(invoice.notes);
    // An invoice with no term shows the terms' first entry, "(Blank)".
    set_list_index(lst_Terms, Glob_Search_List(lst_Terms, invoice.term_id.value_or(0)));
    int date_row = -1;
    for (int row = 0; invoice.activity_date && row < lst_Activity_Dates->count(); ++row)
        if (Activity_Date_At_Head(lst_Activity_Dates->item(row)->text()) == invoice.activity_date) {
            date_row = row;
            break;
        }
    set_list_index(lst_Activity_Dates, date_row);
    invoice_activity_date_ = invoice.activity_date;
    remember_invoice_as_loaded();
    Clear_highlights();
}

void frm_Invoice_Lines::Display_Line()
{
    LineRecord line;
    bool found = false;
    if (!DB_Read_Invoice_Line(line_id(), line, found))
        return;
    if (!found) {
        Clear_Line_screen();
        return;
    }
    txt_Description->setText(line.description);
    txt_Amount->setText(vb::Format(QVariant::fromValue(line.amount), QStringLiteral("currency")));
    // A line for the family shows the "(Blank)" pupil; a line for no course
    // or activity shows no choice there, as it was entered.
    set_list_index(lst_Pupils, Glob_Search_List(lst_Pupils, line.pupil_id.value_or(0)));
    Get_Courses();
    set_list_index(lst_Courses, line.course_id ? Glob_Search_List(lst_Courses, *line.course_id) : -1);
    Get_Activities();
    set_list_index(lst_Activities, line.activity_id ? Glob_Search_List(lst_Activities, *line.activity_id) : -1);
    remember_line_as_loaded();
    Clear_Line_Highlights();
}

void frm_Invoice_Lines::Clear_Invoice_screen()
{
    txt_Date->clear();
    txt_Reason->clear();
    txt_Notes->clear();
    set_list_index(lst_Terms, -1);
    set_list_index(lst_Activity_Dates, -1);
    invoice_activity_date_.reset();
    remember_invoice_as_loaded();
    Clear_highlights();
}

void frm_Invoice_Lines::Clear_Line_screen()
{
    txt_Line_id->setText(QStringLiteral("0"));
    txt_Amount->clear();
    txt_Description->clear();
    set_list_index(lst_Pupils, -1);
    Get_Courses();
    Get_Activities();
    remember_line_as_loaded();
    Clear_Line_Highlights();
}

void frm_Invoice_Lines::Clear_highlights()
{
    for (QWidget* field : std::initializer_list<QWidget*>{txt_Invoice_id, txt_Date, txt_Reason, txt_Notes, lst_Terms,
                                                          lst_Activity_Dates})
        set_field_colour(field, colours::At_Rest);
}

void frm_Invoice_Lines::Clear_Line_Highlights()
{
    for (QWidget* field : std::initializer_list<QWidget*>{txt_Line_id, lst_Pupils, lst_Courses, lst_Activities,
                                                          txt_Amount, txt_Description})
        set_field_colour(field, colours::At_Rest);
}

void frm_Invoice_Lines::remember_invoice_as_loaded()
{
    date_0_ = txt_Date->text();
    reason_0_ = txt_Reason->text();
    notes_0_ = txt_Notes->toPlainText();
    loaded_rows_[lst_Terms] = list_index(lst_Terms);
    loaded_rows_[lst_Activity_Dates] = list_index(lst_Activity_Dates);
}

void frm_Invoice_Lines::remember_line_as_loaded()
{
    amount_0_ = txt_Amount->text();
    description_0_ = txt_Description->text();
    for (const QListWidget* list : {lst_Pupils, lst_Courses, lst_Activities})
        loaded_rows_[list] = list_index(list);
}

void frm_Invoice_Lines::Add_New()
{
    show_status(QStringLiteral("Adding a new Invoice"));
    set_field_colour(txt_Invoice_id, colours::Highlight);
    txt_Date->setText(long_date(engine::make_datetime(QDate::currentDate())));
    date_0_ = txt_Date->text();
}

// ---- The lists ----

void frm_Invoice_Lines::fill_list(QListWidget* list, const ListEntries& entries)
{
    const bool was_filling = filling_;
    filling_ = true;
    list->clear();
    for (const ListEntry& entry : entries) {
        auto* item = new QListWidgetItem(entry.text, list);
        item->setData(Qt::UserRole, entry.item_data);
    }
    list->setCurrentRow(-1);
    filling_ = was_filling;
}

void frm_Invoice_Lines::set_list_index(QListWidget* list, int row)
{
    const bool was_filling = filling_;
    filling_ = true;
    if (row < 0 || row >= list->count()) {
        list->clearSelection();
        list->setCurrentRow(-1);
    } else {
        list->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
        list->scrollToItem(list->item(row));
    }
    filling_ = was_filling;
}

void frm_Invoice_Lines::Get_Terms()
{
    ListEntries entries;
    Invoice_Term_Entries(entries);
    fill_list(lst_Terms, entries);
}

void frm_Invoice_Lines::Get_Activity_Dates()
{
    ListEntries entries;
    Invoice_Activity_Date_Entries(entries);
    fill_list(lst_Activity_Dates, entries);
}

void frm_Invoice_Lines::Get_Pupils()
{
    ListEntries entries;
    Family_Pupil_Entries(family_id_, entries);
    fill_list(lst_Pupils, entries);
}

namespace {

// Which pupil the courses and activities are listed for.
PupilFor pupil_for(int invoice_id, ListChoice pupil)
{
    if (invoice_id == 0)
        return PupilFor::No_Invoice;
    if (!pupil)
        return PupilFor::No_Pupil;
    return *pupil < 1 ? PupilFor::Blank : PupilFor::Pupil;
}

}  // namespace

void frm_Invoice_Lines::Get_Courses()
{
    const ListChoice pupil = list_choice(lst_Pupils);
    ListEntries entries;
    Pupil_Course_Entries(pupil_for(invoice_id(), pupil), pupil.value_or(0), entries);
    fill_list(lst_Courses, entries);
}

void frm_Invoice_Lines::Get_Activities()
{
    const ListChoice pupil = list_choice(lst_Pupils);
    ListEntries entries;
    Pupil_Activity_Entries(pupil_for(invoice_id(), pupil), pupil.value_or(0), invoice_activity_date_, entries);
    fill_list(lst_Activities, entries);
}

void frm_Invoice_Lines::refuse_both(QListWidget* clicked, QListWidget* other, const QString& words)
{
    if (list_index(clicked) <= 0 || list_index(other) <= 0)
        return;
    App_Box(words);
    set_list_index(other, -1);
}

void frm_Invoice_Lines::lst_Terms_Click()
{
    refuse_both(lst_Terms, lst_Activity_Dates,
                QStringLiteral("You cannot invoice for both a term") + QStringLiteral(" and an activity date. ") + line_end
                    + QStringLiteral("Choose either a term OR an activity date."));
}

void frm_Invoice_Lines::lst_Activity_Dates_Click()
{
    refuse_both(lst_Activity_Dates, lst_Terms,
                QStringLiteral("You cannot invoice for both a term") + QStringLiteral(" and an activity date. ") + line_end
                    + QStringLiteral("Choose either a term OR an activity date."));
}

void frm_Invoice_Lines::lst_Courses_Click()
{
    refuse_both(lst_Courses, lst_Activities,
                QStringLiteral("You cannot invoice for both a course") + QStringLiteral(" and an activity. ") + line_end
                    + QStringLiteral("Choose either a course OR an activity."));
}

void frm_Invoice_Lines::lst_Activities_Click()
{
    refuse_both(lst_Activities, lst_Courses,
                QStringLiteral("You cannot invoice for both a course") + QStringLiteral(" and an activity. ") + line_end
                    + QStringLiteral("Choose either a course OR an activity."));
}

void frm_Invoice_Lines::lst_Pupils_Click()
{
    if (list_index(lst_Pupils) != loaded_rows_.value(lst_Pupils, -1))
        set_field_colour(lst_Pupils, colours::Highlight);
    Get_Courses();
    Get_Activities();
}

// ---- Leaving a field ----

bool frm_Invoice_Lines::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut && !returning_focus_) {
        // A message box or a pop-up taking the focus for a moment isn't leaving the field.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            field_left(static_cast<QWidget*>(watched));
    }
    return QWidget::eventFilter(watched, event);
}

bool frm_Invoice_Lines::changed(QWidget* field) const
{
    if (auto* list = qobject_cast<QListWidget*>(field))
        return list_index(list) != loaded_rows_.value(list, -1);
    if (field == txt_Date)
        return txt_Date->text() != date_0_;
    if (field == txt_Reason)
        return txt_Reason->text() != reason_0_;
    if (field == txt_Notes)
        return txt_Notes->toPlainText() != notes_0_;
    if (field == txt_Amount)
        return txt_Amount->text() != amount_0_;
    if (field == txt_Description)
        return txt_Description->text() != description_0_;
    return false;
}

void frm_Invoice_Lines::field_left(QWidget* field)
{
    if (!changed(field))
        return;
    const bool invoice_field = field->parentWidget() == frame_Invoice;
    if (!invoice_field) {
        Check_LostFocus_Line(field);
        return;
    }
    // A date is checked when the invoice may take it; otherwise the
    // refusal of the change says why.
    const bool may_change = !line_in_progress() && (invoice_in_progress() || invoice_id() != 0);
    if (field == txt_Date && may_change && !vb::IsDate(txt_Date->text())) {
        engine::Err().Clear();
        App_Box(QStringLiteral("Invalid date"));
        focus_back(txt_Date);
        return;
    }
    Check_LostFocus_Invoice(field);
}

void frm_Invoice_Lines::Check_LostFocus_Invoice(QWidget* field)
{
    if (line_in_progress()) {
        App_Box(QStringLiteral("There are already changes to the Line in progress.") + line_end
            + QStringLiteral("Press Update Line or Cancel first."));
    } else if (!invoice_in_progress() && invoice_id() == 0) {
        App_Box(QStringLiteral("There is nothing to edit. ") + line_end + QStringLiteral("Choose a invoice to edit, or ")
            + QStringLiteral("press Add New"));
    } else {
        set_field_colour(field, colours::Highlight);
        set_field_colour(txt_Invoice_id, colours::Highlight);
        return;
    }
    // The invoice isn't being changed: it shows again what it holds.
    if (invoice_id() != 0)
        Display_Invoice();
    else
        Clear_Invoice_screen();
}

void frm_Invoice_Lines::Check_LostFocus_Line(QWidget* field)
{
    if (invoice_in_progress()) {
        App_Box(QStringLiteral("There are already changes to the Invoice in progress.") + line_end
            + QStringLiteral("Press Update or Cancel first."));
    } else if (!line_in_progress() && line_id() == 0) {
        App_Box(QStringLiteral("There is nothing to edit. ") + line_end + QStringLiteral("Choose a Line to edit, or ")
            + QStringLiteral("press Add New"));
    } else {
        set_field_colour(field, colours::Highlight);
        set_field_colour(txt_Line_id, colours::Highlight);
        return;
    }
    // The line isn't being changed: it shows again what it holds.
    if (line_id() != 0) {
        Display_Line();
        return;
    }
    set_list_index(lst_Pupils, loaded_rows_.value(lst_Pupils, -1));
    const int course_row = loaded_rows_.value(lst_Courses, -1);
    const int activity_row = loaded_rows_.value(lst_Activities, -1);
    Get_Courses();
    set_list_index(lst_Courses, course_row);
    Get_Activities();
    set_list_index(lst_Activities, activity_row);
    txt_Amount->setText(amount_0_);
    txt_Description->setText(description_0_);
    remember_line_as_loaded();
    Clear_Line_Highlights();
}

void frm_Invoice_Lines::focus_back(QWidget* field)
{
    returning_focus_ = true;
    QTimer::singleShot(0, this, [this, field] {
        field->setFocus(Qt::OtherFocusReason);
        returning_focus_ = false;
    });
}

// ---- The invoice's commands ----

void frm_Invoice_Lines::cmd_Update_Click()
{
    if (!invoice_in_progress()) {
        show_status(QStringLiteral("No changes to update"));
        return;
    }
    const InvoiceTyped typed{txt_Date->text(), txt_Reason->text(), txt_Notes->toPlainText(), list_choice(lst_Terms),
                             chosen_text(lst_Activity_Dates)};
    InvoiceHeader header;
    const EntryRefusal refusal = Check_Invoice_Entry(typed, family_id_, engine::now().time(), header);
    if (refusal.refused()) {
        App_Box(refusal.message);
        switch (InvoiceField(refusal.field)) {
        case InvoiceField::Date: txt_Date->setFocus(Qt::OtherFocusReason); break;
        case InvoiceField::Reason: txt_Reason->setFocus(Qt::OtherFocusReason); break;
        default: lst_Terms->setFocus(Qt::OtherFocusReason); break;
        }
        return;
    }
    const bool adding = invoice_id() == 0;
    const InvoiceSave saved = adding ? DB_Insert_Manual_Invoice(header) : DB_Update_Manual_Invoice(invoice_id(), header);
    if (saved.outcome == SaveOutcome::Duplicate) {
        App_Box(QStringLiteral("There is already an invoice")
            + QStringLiteral(" with this combination of Reason/Term Name/Activity Date.") + line_end
            + QStringLiteral("Change the Reason and try again."));
        return;
    }
    if (!saved.status.isEmpty())
        show_status(saved.status);
    if (saved.outcome != SaveOutcome::Saved)
        return;
    if (adding)
        txt_Invoice_id->setText(QString::number(saved.invoice_id));
    // The invoice now stands as stored.
    invoice_activity_date_ = header.activity_date;
    remember_invoice_as_loaded();
    Clear_highlights();
    if (!adding)
        return;
    // Straight on to the invoice's first line, for its first pupil.
    cmd_Add_Line_Click();
    set_list_index(lst_Pupils, lst_Pupils->count() > 1 ? 1 : 0);
    lst_Pupils_Click();
}

void frm_Invoice_Lines::cmd_Cancel_Click()
{
    cancel_half(invoice_in_progress(), invoice_id(), &frm_Invoice_Lines::Clear_Invoice_screen,
                &frm_Invoice_Lines::Display_Invoice);
}

// Cancel in either half: an addition is dropped, a change is shown again as stored.
void frm_Invoice_Lines::cancel_half(bool in_progress, int id, void (frm_Invoice_Lines::*clear)(),
                                    void (frm_Invoice_Lines::*display)())
{
    if (!in_progress) {
        show_status(QStringLiteral("Nothing to cancel"));
        return;
    }
    if (id == 0) {
        (this->*clear)();
        show_status(QStringLiteral("Addition cancelled"));
        return;
    }
    show_status(QStringLiteral("Change cancelled"));
    (this->*display)();
}

// ---- The line's commands ----

void frm_Invoice_Lines::cmd_Add_Line_Click()
{
    if (invoice_in_progress()) {
        App_Box(QStringLiteral("There are already changes to the Invoice in progress"));
        return;
    }
    show_status(QStringLiteral("Adding a new Line"));
    txt_Line_id->setText(QStringLiteral("0"));
    txt_Amount->clear();
    txt_Description->clear();
    set_list_index(lst_Pupils, -1);
    Get_Courses();
    Get_Activities();
    remember_line_as_loaded();
    Clear_Line_Highlights();
    set_field_colour(txt_Line_id, colours::Highlight);
}

void frm_Invoice_Lines::cmd_Update_Line_Click()
{
    if (!line_in_progress()) {
        show_status(QStringLiteral("No changes to update"));
        return;
    }
    const LineTyped typed{txt_Amount->text(),         txt_Invoice_id->text(),      list_choice(lst_Pupils),
                          list_choice(lst_Courses),   list_choice(lst_Activities), txt_Description->text()};
    LineValues line;
    const EntryRefusal refusal = Check_Line_Entry(typed, line);
    if (refusal.refused()) {
        App_Box(refusal.message);
        if (LineField(refusal.field) == LineField::Amount)
            txt_Amount->setFocus(Qt::OtherFocusReason);
        else if (LineField(refusal.field) == LineField::Pupil)
            lst_Pupils->setFocus(Qt::OtherFocusReason);
        return;
    }
    const LineSave saved = DB_Save_Invoice_Line(line_id(), line);
    if (!saved.ran)
        return;
    show_status(saved.status);
    remember_line_as_loaded();
    Clear_Line_Highlights();
}

void frm_Invoice_Lines::cmd_Line_Cancel_Click()
{
    cancel_half(line_in_progress(), line_id(), &frm_Invoice_Lines::Clear_Line_screen, &frm_Invoice_Lines::Display_Line);
}

// ---- The menu ----

void frm_Invoice_Lines::mnu_Exit_Click()
{
    // The field being typed in is left first, so that its change counts.
    cmd_Update->setFocus(Qt::OtherFocusReason);
    QApplication::processEvents();
    if (!invoice_in_progress() && !line_in_progress()) {
        Switch_Screen(this, nullptr, false);
        return;
    }
    const int answer = App_Box(QStringLiteral("You have made changes that") + QStringLiteral(" have not been stored in the database.")
                               + line_end + QStringLiteral("Do you wish to save the changes?"),
                           engine::mb::YesNo | engine::mb::Question);
    if (answer != engine::answer::Yes) {
        Switch_Screen(this, nullptr, false);
        return;
    }
    if (invoice_in_progress())
        cmd_Update_Click();
    else
        cmd_Update_Line_Click();
}

void frm_Invoice_Lines::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Invoice_Lines);
}

void frm_Invoice_Lines::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    event->accept();
}
