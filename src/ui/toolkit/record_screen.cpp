#include "ui/toolkit/record_screen.h"

#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/bound_fields.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// The pattern's reports of a state it doesn't know, and of a save that failed
// for a reason other than a duplicate.
constexpr int unexpected_state = 300001;

// A report numbered as a detected failure doesn't read the engine's error,
// so the routine line of its log entry carries the cause: the number and
// text of the failure at hand, when there is one.
QString with_cause(const QString& routine)
{
    const engine::ErrState& err = engine::Err();
    if (err.Number == 0)
        return routine;
    return routine + QStringLiteral(" : ") + QString::number(err.Number) + QStringLiteral(" : ") + err.Description;
}

}  // namespace

RecordScreen::RecordScreen(RecordScreenWords words, QWidget* parent)
    : QWidget(parent, Qt::Window),
      words_(std::move(words)),
      data_(words_.data_name,
            QStringLiteral("Error accessing ") + (words_.control_noun.isEmpty() ? words_.noun : words_.control_noun)
                + QStringLiteral(" Control "),
            words_.module)
{
    setObjectName(words_.form_name);
    setWindowTitle(words_.caption);
    // Load: the screen's colours, then its common controls at rest.
    Screen_Setup(this, true, Glob_Form_Colour());
    build_common_controls();
    set_frame_colour(frame_status, Glob_Form_Colour());
    set_frame_colour(frame_Navigation, Glob_Form_Colour());
    txt_Status->clear();
    connect_commands();
    data_.set_on_reposition([this] { on_reposition(); });
}

RecordScreen::~RecordScreen()
{
    // The fields go before the controls they watch.
    bindings_.clear();
}

// ---- Construction ----

void RecordScreen::build_common_controls()
{
    auto* layout = new QVBoxLayout(this);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    const NavigationFrame navigation = add_navigation_frame(this, layout, QStringLiteral("cmb_Names"), 24);
    frame_Navigation = navigation.frame;
    cmb_Names = navigation.names;
    cmd_First = navigation.first;
    cmd_Prev = navigation.prev;
    cmd_Next = navigation.next;
    cmd_Last = navigation.last;
    // The list has no label on the screen; a screen reader still names it.
    cmb_Names->setAccessibleName(QStringLiteral("Choose a ") + words_.noun);

    record_area_ = new QWidget(this);
    record_area_->setObjectName(QStringLiteral("record_area"));
    auto* columns = new QHBoxLayout(record_area_);
    columns->setContentsMargins(4, 8, 4, 8);
    columns->setSpacing(24);
    for (QGridLayout*& column : columns_) {
        column = new QGridLayout;
        column->setColumnStretch(1, 1);
        column->setVerticalSpacing(8);
        columns->addLayout(column, 1);
    }
    layout->addWidget(record_area_, 1);

    command_row_ = new QHBoxLayout;
    command_row_->addStretch(1);
    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add New"));
    cmd_Update = make_button(this, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    cmd_Cancel = make_button(this, QStringLiteral("cmd_Cancel"), QStringLiteral("&Cancel"));
    cmd_Delete = make_button(this, QStringLiteral("cmd_Delete"), QStringLiteral("&Delete"));
    for (QPushButton* button : {cmd_Add, cmd_Update, cmd_Cancel, cmd_Delete})
        command_row_->addWidget(button);
    layout->addLayout(command_row_);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;
}

void RecordScreen::connect_commands()
{
    connect(cmd_First, &QPushButton::clicked, this, &RecordScreen::cmd_First_Click);
    connect(cmd_Prev, &QPushButton::clicked, this, &RecordScreen::cmd_Prev_Click);
    connect(cmd_Next, &QPushButton::clicked, this, &RecordScreen::cmd_Next_Click);
    connect(cmd_Last, &QPushButton::clicked, this, &RecordScreen::cmd_Last_Click);
    connect(cmd_Add, &QPushButton::clicked, this, &RecordScreen::cmd_Add_Click);
    connect(cmd_Update, &QPushButton::clicked, this, &RecordScreen::cmd_Update_Click);
    connect(cmd_Cancel, &QPushButton::clicked, this, &RecordScreen::cmd_Cancel_Click);
    connect(cmd_Delete, &QPushButton::clicked, this, &RecordScreen::cmd_Delete_Click);
    connect(cmb_Names, &QComboBox::activated, this, &RecordScreen::cmb_Names_Click);
    connect(mnu_Exit, &QAction::triggered, this, &RecordScreen::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &RecordScreen::mnu_Help_Click);
}

// Labels stay on one line, so that each stands level with its field; the
// column of labels is as wide as its longest.
QLabel* RecordScreen::field_label(const QString& text)
{
    return new QLabel(text, record_area_);
}

void RecordScreen::add_row(int column, const QString& label, QWidget* field, bool grows)
{
    QGridLayout* grid = columns_[column == 0 ? 0 : 1];
    const int row = grid->rowCount();
    QLabel* caption = field_label(label);
    caption->setBuddy(field);
    grid->addWidget(caption, row, 0, (grows ? Qt::AlignTop : Qt::AlignVCenter) | Qt::AlignRight);
    grid->addWidget(field, row, 1);
    if (grows)
        grid->setRowStretch(row, 1);
}

QLineEdit* RecordScreen::add_line(int column, const QString& name, const QString& label)
{
    auto* edit = new QLineEdit(record_area_);
    edit->setObjectName(name);
    // However small the window, a box shows a dozen characters of what it holds.
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 12);
    add_row(column, label, edit, false);
    return edit;
}

QPlainTextEdit* RecordScreen::add_text(int column, const QString& name, const QString& label)
{
    auto* text = new QPlainTextEdit(record_area_);
    text->setObjectName(name);
    // Wide enough for a few words; its height is what its scroll bar needs.
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 16);
    add_row(column, label, text, true);
    return text;
}

void RecordScreen::add_row_widget(int column, QWidget* widget, bool grows)
{
    QGridLayout* grid = columns_[column == 0 ? 0 : 1];
    widget->setParent(record_area_);
    const int row = grid->rowCount();
    grid->addWidget(widget, row, 1);
    if (grows)
        grid->setRowStretch(row, 1);
}

void RecordScreen::add_growing_row(int column, const QString& label, QWidget* field)
{
    field->setParent(record_area_);
    add_row(column, label, field, true);
}

void RecordScreen::add_wide_widget(QWidget* widget, bool grows)
{
    auto* screen_layout = static_cast<QVBoxLayout*>(layout());
    const int at = screen_layout->indexOf(record_area_) + 1 + wide_widgets_++;
    screen_layout->insertWidget(at, widget, grows ? 1 : 0);
    if (grows)
        screen_layout->setStretchFactor(record_area_, 0);
}

void RecordScreen::add_field_row(int column, const QString& label, QWidget* field)
{
    field->setParent(record_area_);
    add_row(column, label, field, false);
}

QPushButton* RecordScreen::add_command(const QString& name, const QString& caption)
{
    auto* button = make_button(this, name, caption);
    command_row_->insertWidget(0, button);
    return button;
}

void RecordScreen::add_xfer_id()
{
    txt_Xfer_Id = new QLineEdit(this);
    txt_Xfer_Id->setObjectName(QStringLiteral("txt_Xfer_Id"));
    txt_Xfer_Id->hide();
    txt_Xfer_Id->clear();
}

void RecordScreen::bind(QWidget* control, const QString& column, OnLeave on_leave)
{
    Binding binding;
    binding.field = make_bound_field(control, column);
    Q_ASSERT(binding.field);
    binding.control = control;
    binding.on_leave = on_leave;
    data_.bind(binding.field.get());
    set_field_colour(control, colours::At_Rest);
    if (auto* box = qobject_cast<QCheckBox*>(control))
        connect(box, &QCheckBox::clicked, this, [this, box] { Check_LostFocus(box); });
    else {
        Enter_To_Tab(control);
        control->installEventFilter(this);
    }
    bindings_.push_back(std::move(binding));
}

void RecordScreen::bind_money(QLineEdit* control, const QString& column)
{
    bind(control, column);
    bindings_.back().field->set_money(true);
}

void RecordScreen::bind_date(QLineEdit* control, const QString& column)
{
    bind(control, column);
    bindings_.back().field->set_picture(Glob_Date_Format());
}

void RecordScreen::bind_title(QLineEdit* control, const QString& column)
{
    title_field_ = control;
    bind(control, column);
}

void RecordScreen::bind_hidden(QLineEdit* control, const QString& column)
{
    Binding binding;
    binding.field = make_bound_field(control, column);
    binding.field->set_read_only(true);
    binding.control = control;
    binding.hidden = true;
    control->hide();
    data_.bind(binding.field.get());
    bindings_.push_back(std::move(binding));
}

void RecordScreen::Setup_Controls(const QString& record_source, const QString& key_column, const QString& title_column)
{
    key_column_ = key_column;
    title_column_ = title_column;
    data_.Refresh(Current_Db(), record_source);
    // A column without a field that grows keeps its rows together at the top.
    for (QGridLayout* column : columns_) {
        bool grows = false;
        for (int row = 0; row < column->rowCount(); ++row)
            grows = grows || column->rowStretch(row) > 0;
        if (!grows)
            column->setRowStretch(column->rowCount(), 1);
    }
    // No minimum is set here: the screen's layout keeps the window at least
    // as large as its controls need, as they are once styled and filled.
}

RecordScreen::Binding* RecordScreen::binding_of(QWidget* control)
{
    for (Binding& binding : bindings_)
        if (binding.control == control)
            return &binding;
    return nullptr;
}

// ---- Events ----

void RecordScreen::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void RecordScreen::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    data_.Close();
    event->accept();
}

bool RecordScreen::eventFilter(QObject* watched, QEvent* event)
{
    if (Is_Field_Left(event)) {
        auto* control = static_cast<QWidget*>(watched);
        if (control == title_field_)
            title_left();
        else
            field_left(control);
    }
    return QWidget::eventFilter(watched, event);
}

void RecordScreen::field_left(QWidget* control)
{
    Binding* binding = binding_of(control);
    if (!binding)
        return;
    if (binding->on_leave == OnLeave::Upper_Case) {
        if (auto* edit = qobject_cast<QLineEdit*>(control)) {
            const QString upper = edit->text().toUpper();
            if (upper != edit->text())
                edit->setText(upper);
        }
    }
    // An amount typed as "5.5" reads "5.50" once the field is left.
    if (binding->field->is_money()) {
        if (auto* edit = qobject_cast<QLineEdit*>(control); edit && vb::IsNumeric(edit->text())) {
            const QString money = Money_Text(edit->text());
            if (money != edit->text())
                edit->setText(money);
        }
        engine::Err().Clear();
    }
    Check_LostFocus(control);
}

void RecordScreen::title_left()
{
    const QString text = title_field_->text();
    if (text.trimmed().isEmpty())
        return;
    if (text.contains(QLatin1Char('"'))) {
        App_Box(QStringLiteral("The title cannot include quotes"));
        QTimer::singleShot(0, title_field_, [field = title_field_] { field->setFocus(Qt::OtherFocusReason); });
        return;
    }
    Check_LostFocus(title_field_);
}

void RecordScreen::Form_Activate()
{
    Setup_List();
    if (!data_.Recordset())
        return;  // no database: the failure has been reported
    if (data_.Recordset()->RecordCount() == 0) {
        cmd_Add_Click();
        return;
    }
    const QString xfer = txt_Xfer_Id ? txt_Xfer_Id->text().trimmed() : QString();
    if (xfer.isEmpty()) {
        cmb_Names->setCurrentIndex(0);
        Move_Selected();
    } else {
        Move_Selected(xfer.toInt());
    }
}

// ---- The pattern's routines ----

void RecordScreen::Setup_List()
{
    HourGlass hour_glass;
    cmb_Names->clear();
    engine::Recordset* records = data_.Recordset();
    if (!records || records->RecordCount() == 0) {
        if (records && !words_.empty_list.isEmpty())
            App_Box(words_.empty_list);
        Setup_Own_Lists();
        return;
    }
    std::unique_ptr<engine::Recordset> clone = records->Clone();
    if (!clone || !clone->MoveFirst()) {
        report_unexpected(QStringLiteral("Setup_List"));
        return;
    }
    while (!clone->at_eof()) {
        const QVariant title = clone->Fields(title_column_);
        if (!title.isNull()) {
            if (list_by_title_)
                cmb_Names->addItem(title.toString());
            else
                cmb_Names->addItem(title.toString(), clone->Fields(key_column_).toInt());
        }
        if (!clone->MoveNext())
            break;
    }
    clone->Close();
    engine::Err().Clear();
    show_list_at_current();
    Setup_Own_Lists();
}

void RecordScreen::Move_Selected()
{
    const int index = cmb_Names->currentIndex();
    if (index < 0)
        return;
    if (list_by_title_)
        Move_To(title_column_ + QStringLiteral(" = \"") + cmb_Names->itemText(index) + QStringLiteral("\" "));
    else
        Move_Selected(cmb_Names->itemData(index).toInt());
}

void RecordScreen::Move_Selected(int key)
{
    Move_To(key_column_ + QStringLiteral(" = ") + QString::number(key));
}

void RecordScreen::Move_To(const QString& criteria)
{
    const QString module = words_.move_selected_module.isEmpty() ? words_.module : words_.move_selected_module;
    if (data_.is_empty()) {
        Report_Error(report::Detected, words_.titles_out_of_date, engine::mb::Information, module,
                     QStringLiteral("Move_Selected"));
        return;
    }
    if (!data_.FindFirst(criteria)) {
        report_unexpected(QStringLiteral("Move_Selected"));
        return;
    }
    if (data_.NoMatch())
        Report_Error(report::Detected, QStringLiteral("Unexpected error - selected title could not be found"),
                     engine::mb::Information, module, QStringLiteral("Move_Selected"));
}

void RecordScreen::cmb_Names_Click()
{
    switch (EditMode()) {
    case engine::editmode::None:
        if (!data_.is_empty())
            Move_Selected();
        return;
    case engine::editmode::InProgress:
    case engine::editmode::Add:
        App_Box(QStringLiteral("There are outstanding changes."));
        show_list_at_current();
        return;
    default:
        report_unexpected_mode(QStringLiteral("cmb_Names_Click"));
    }
}

void RecordScreen::on_reposition()
{
    engine::Recordset* records = data_.Recordset();
    if (!records || records->at_bof() || records->at_eof() || EditMode() != engine::editmode::None)
        return;
    if (list_follows_record())
        show_list_at_current();
    Record_Shown();
}

// The list shows the current record: its entry by key, or nothing.
void RecordScreen::show_list_at_current()
{
    engine::Recordset* records = data_.Recordset();
    if (!records || (records->EditMode() != engine::editmode::Add && (records->at_bof() || records->at_eof()))) {
        cmb_Names->setCurrentIndex(-1);
        return;
    }
    if (records->EditMode() == engine::editmode::Add) {
        cmb_Names->setCurrentIndex(-1);
        return;
    }
    int index = list_by_title_ ? -1 : Glob_Search_Combo(cmb_Names, records->Fields(key_column_).toInt());
    if (index < 0)
        index = cmb_Names->findText(records->Fields(title_column_).toString());
    cmb_Names->setCurrentIndex(index);
    engine::Err().Clear();
}

QString RecordScreen::current_title() const
{
    return data_.Recordset() ? data_.Recordset()->Fields(title_column_).toString() : QString();
}

int RecordScreen::current_key() const
{
    return data_.Recordset() ? data_.Recordset()->Fields(key_column_).toInt() : 0;
}

void RecordScreen::set_status(const QString& text)
{
    txt_Status->setText(text);
}

// Navigation is refused during an edit, and pointless without records.
bool RecordScreen::navigation_allowed()
{
    if (EditMode() != engine::editmode::None) {
        App_Box(QStringLiteral("There are changes outstanding - cannot move"));
        return false;
    }
    set_status(QString());
    if (data_.is_empty()) {
        App_Box(QStringLiteral("There are no records"));
        return false;
    }
    return true;
}

void RecordScreen::cmd_First_Click()
{
    if (navigation_allowed() && !data_.MoveFirst())
        report_unexpected(words_.first_routine);
}

void RecordScreen::cmd_Last_Click()
{
    if (navigation_allowed() && !data_.MoveLast())
        report_unexpected(words_.last_routine);
}

void RecordScreen::cmd_Next_Click()
{
    if (!navigation_allowed())
        return;
    if (!data_.MoveNext()) {
        report_unexpected(words_.next_routine);
        return;
    }
    if (data_.Recordset()->at_eof()) {
        set_status(QStringLiteral("There are no more records"));
        if (!data_.MoveLast())
            report_unexpected(words_.next_routine);
    }
}

void RecordScreen::cmd_Prev_Click()
{
    if (!navigation_allowed())
        return;
    if (!data_.MovePrevious()) {
        report_unexpected(words_.prev_routine);
        return;
    }
    if (data_.Recordset()->at_bof()) {
        set_status(QStringLiteral("There are no more records"));
        if (!data_.MoveFirst())
            report_unexpected(words_.prev_routine);
    }
}

void RecordScreen::cmd_Add_Click()
{
    set_status(QString());
    if (EditMode() != engine::editmode::None) {
        App_Box(QStringLiteral("There are changes already in progress"));
        return;
    }
    if (!data_.AddNew()) {
        report_unexpected(QStringLiteral("cmd_Add_Click"));
        return;
    }
    Clear_screen();
    show_list_at_current();
    set_status(QStringLiteral("Adding a new ") + words_.noun);
    if (QWidget* first = first_field())
        first->setFocus(Qt::OtherFocusReason);
}

QWidget* RecordScreen::first_field() const
{
    return title_field_;
}

void RecordScreen::Check_LostFocus(QWidget* control)
{
    Binding* binding = binding_of(control);
    if (!binding)
        return;
    BoundField& field = *binding->field;
    switch (EditMode()) {
    case engine::editmode::Add:
        if (field.is_check_box() || !field.trimmed_text().isEmpty())
            set_field_colour(control, colours::Highlight);
        return;
    case engine::editmode::InProgress:
        if (field.DataChanged())
            set_field_colour(control, colours::Highlight);
        return;
    case engine::editmode::None:
        if (!field.DataChanged())
            return;
        if (data_.is_empty()) {
            App_Box(QStringLiteral("There is no record to edit. ") + QLatin1Char('\n') + words_.choose_title
                + QStringLiteral("press Add New"));
            data_.UpdateControls();
            return;
        }
        if (!data_.Edit()) {
            report_unexpected(QStringLiteral("Check_LostFocus"));
            return;
        }
        set_field_colour(control, colours::Highlight);
        return;
    default:
        report_unexpected_mode(QStringLiteral("Check_LostFocus"));
    }
}

bool RecordScreen::Validate_Data()
{
    const QString title = title_field_->text();
    if (title.trimmed().isEmpty()) {
        App_Box(words_.title_missing);
        title_field_->setFocus(Qt::OtherFocusReason);
        return false;
    }
    if (title.contains(QLatin1Char('"'))) {
        App_Box(words_.title_quotes);
        title_field_->setFocus(Qt::OtherFocusReason);
        return false;
    }
    return Validate_Own_Rules();
}

void RecordScreen::cmd_Update_Click()
{
    const int mode = EditMode();
    if (mode == engine::editmode::None) {
        set_status(QStringLiteral("No changes to update"));
        return;
    }
    if (!Validate_Data())
        return;
    const QString title = title_field_->text();
    const QString done = title + (mode == engine::editmode::Add ? QStringLiteral(" added successfully")
                                                                : QStringLiteral(" updated successfully"));
    if (!Write_Record())
        return;
    Clear_highlights();
    set_status(done);
    if (!data_.Requery()) {
        report_unexpected(QStringLiteral("cmd_Update"));
        return;
    }
    Setup_List();
    // Titles can't hold a quote mark, which is what makes this search safe.
    if (!data_.FindFirst(title_column_ + QStringLiteral(" = \"") + title + QLatin1Char('"'))) {
        report_unexpected(QStringLiteral("cmd_Update"));
        return;
    }
    if (data_.NoMatch()) {
        Report_Error(report::Detected, words_.lost_after_update, engine::mb::Information, words_.module,
                     QStringLiteral("cmd_Update"));
        data_.MoveFirst();
    }
}

bool RecordScreen::Write_Record()
{
    if (data_.Update())
        return true;
    Report_Write_Failure();
    return false;
}

void RecordScreen::Report_Write_Failure()
{
    if (engine::Err().Number == engine::jet::DuplicateKey) {
        engine::Err().Clear();
        App_Box(words_.duplicate);
        title_field_->setFocus(Qt::OtherFocusReason);
    } else {
        Report_Error(unexpected_state, QStringLiteral("Unexpected error "), engine::mb::Information, words_.module,
                     with_cause(QStringLiteral("cmd_Update")));
    }
}

void RecordScreen::cmd_Cancel_Click()
{
    switch (EditMode()) {
    case engine::editmode::None:
        set_status(QStringLiteral("Nothing to cancel"));
        break;
    case engine::editmode::Add:
        data_.CancelUpdate();
        set_status(QStringLiteral("Addition cancelled"));
        break;
    case engine::editmode::InProgress:
        data_.CancelUpdate();
        set_status(QStringLiteral("Change cancelled"));
        break;
    default:
        report_unexpected_mode(words_.cancel_routine);
    }
    Clear_highlights();
    data_.UpdateControls();
    show_list_at_current();
}

QString RecordScreen::criteria_after_delete(const QString& title) const
{
    return title_column_ + QStringLiteral(" = \"") + title + QLatin1Char('"');
}

void RecordScreen::cmd_Delete_Click()
{
    if (EditMode() != engine::editmode::None) {
        App_Box(QStringLiteral("There are changes in progress - cannot delete"));
        return;
    }
    if (data_.is_empty()) {
        App_Box(QStringLiteral("There are no records"));
        return;
    }
    const QString title = current_title();
    if (App_Box(QStringLiteral("Do you really want to delete ") + title, engine::mb::YesNo | engine::mb::Question)
        != engine::answer::Yes) {
        set_status(QStringLiteral("Deletion cancelled"));
        return;
    }
    if (!Check_Deletion(current_key())) {
        set_status(words_.deletion_refused);
        return;
    }
    if (!data_.Delete()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    set_status(title + QStringLiteral(" deleted"));
    Move_After_Delete(title);
}

void RecordScreen::Move_After_Delete(const QString& title)
{
    if (!data_.MoveNext()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    if (data_.Recordset()->RecordCount() == 0) {
        App_Box(QStringLiteral("There are no more records"));
        return;
    }
    if (data_.Recordset()->at_eof()) {
        data_.MoveFirst();
        return;
    }
    if (!data_.Requery()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    Setup_List();
    if (data_.FindFirst(criteria_after_delete(title)) && data_.NoMatch())
        data_.MoveFirst();
}

void RecordScreen::Clear_highlights()
{
    for (const Binding& binding : bindings_)
        if (!binding.hidden)
            set_field_colour(binding.control, colours::At_Rest);
}

void RecordScreen::Clear_screen()
{
    // Every bound field, check boxes too, starts from the new record's value;
    // only what the screen keeps on purpose stays.
    data_.fill_new_record([this](const BoundField& field) { return kept_by_clear_screen(control_of(field)); });
    clear_more();
    Clear_highlights();
}

void RecordScreen::mnu_Exit_Click()
{
    // Moving the focus makes the field being typed in run its check, so that
    // a change still in the box is caught.
    cmd_Update->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    if (EditMode() != engine::editmode::None) {
        const int answer = App_Box(QStringLiteral("You have made changes that have not been stored in the database.")
                                   + QLatin1Char('\n') + QStringLiteral("Do you wish to save the changes?"),
                               engine::mb::YesNo | engine::mb::Question);
        if (answer == engine::answer::Yes) {
            cmd_Update_Click();
            return;
        }
        data_.CancelUpdate();
    }
    Switch_Screen(this, nullptr, false);
}

void RecordScreen::mnu_Help_Click()
{
    Show_Help(this, 1, words_.help_context);
}

void RecordScreen::report_unexpected(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, words_.module, routine);
}

void RecordScreen::report_unexpected_mode(const QString& routine) const
{
    Report_Error(unexpected_state, QStringLiteral("Unexpected error "), engine::mb::Information, words_.module,
                 with_cause(routine));
}
