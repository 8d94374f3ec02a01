#include "ui/people/frm_pupil.h"

#include "courses/course_entry.h"
#include "database/db_handling.h"
#include "database/guarded_deletions.h"
#include "database/pupil_course_changes.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "people/pupil_age.h"
#include "people/pupil_family_writes.h"
#include "people/pupil_gender.h"
#include "people/pupil_name.h"
#include "people/pupil_validation.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/report_numbers.h"
#include "shell/transfer_ids.h"
#include "toolkit/help_pages.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/bound_fields.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString module = QStringLiteral("fpupils");

// The words of each Data control's and grid's own failures.
const QString navigation_error = QStringLiteral("Error accessing Navigation Control ");
const QString courses_error = QStringLiteral("Error accessing Courses Taken Control ");
const QString exams_error = QStringLiteral("Error accessing Exams Taken Control ");
const QString festivals_error = QStringLiteral("Error accessing Festivals Control ");
const QString accounts_error = QStringLiteral("Error accessing Accounts Control ");
const QString courses_grid_error = QStringLiteral("Error using Data Grid Courses Taken Control ");
const QString accounts_grid_error = QStringLiteral("Error using Data Grid Accounts Control ");

// The grids' date picture: the platform's medium date, day, month's three
// letters and the year's last two digits.
const QString medium_date = QStringLiteral("dd-mmm-yy");

const QString exit_question = QStringLiteral("You have made changes that have not been stored in the database.")
                              + QLatin1Char('\n') + QStringLiteral("Do you wish to save the changes?");

int box(const QString& text, int style = engine::mb::OkOnly)
{
    return engine::MsgBox(text, style, App_Title());
}

int ask(const QString& question)
{
    return box(question, engine::mb::YesNo | engine::mb::Question);
}

bool is_numeric_text(const QString& text)
{
    const bool numeric = vb::IsNumeric(text.trimmed());
    engine::Err().Clear();
    return numeric;
}

// A grid column shown through a Format picture ("currency", a date
// picture), as the grid's column format does.
class FormatDelegate : public QStyledItemDelegate {
public:
    FormatDelegate(QString picture, bool right_aligned, QObject* parent)
        : QStyledItemDelegate(parent), picture_(std::move(picture)), right_aligned_(right_aligned)
    {
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = vb::Format(index.data(Qt::EditRole), picture_);
        if (right_aligned_)
            option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    }

private:
    QString picture_;
    bool right_aligned_;
};

// A list of many entries, each carrying its key, made away from the combo
// and handed over in one piece: a combo filled entry by entry is slow.
class ComboEntries {
public:
    explicit ComboEntries(QComboBox* combo) : combo_(combo) {}
    void add(const QString& text, int key)
    {
        auto* item = new QStandardItem(text);
        item->setData(key, Qt::UserRole);
        item->setEditable(false);
        items_ << item;
    }
    void hand_over()
    {
        auto* model = new QStandardItemModel(combo_);
        if (!items_.isEmpty())
            model->insertColumn(0, items_);
        // The combo deletes the model it held, which is its own.
        combo_->setModel(model);
        combo_->setCurrentIndex(-1);
    }

private:
    QComboBox* combo_;
    QList<QStandardItem*> items_;
};

QLabel* label_for(QWidget* field, const QString& caption, QWidget* parent)
{
    auto* label = new QLabel(caption, parent);
    label->setBuddy(field);
    return label;
}

// A field and its label on the next row of a two-column grid.
void add_row(QGridLayout* grid, QWidget* field, const QString& caption, bool grows = false)
{
    const int row = grid->rowCount();
    QLabel* label = label_for(field, caption, field->parentWidget());
    grid->addWidget(label, row, 0, (grows ? Qt::AlignTop : Qt::AlignVCenter) | Qt::AlignRight);
    grid->addWidget(field, row, 1);
    if (grows)
        grid->setRowStretch(row, 1);
}

QGridLayout* field_grid()
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(8);
    return grid;
}

void keep_rows_at_top(QGridLayout* grid)
{
    for (int row = 0; row < grid->rowCount(); ++row)
        if (grid->rowStretch(row) > 0)
            return;
    grid->setRowStretch(grid->rowCount(), 1);
}

// A date of the record in the locale's long date format; empty for Null.
QVariant date_shown(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return QVariant();
    return vb::Format(value, Glob_Date_Format());
}

}  // namespace

// ---- The gender shape ----

GenderShape::GenderShape(QWidget* parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("Shape_Gender"));
    setFrameShape(QFrame::Box);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize GenderShape::sizeHint() const
{
    const int side = fontMetrics().height() + 8;
    return {side * 2, side};
}

void GenderShape::set_look(const colours::Rgb& colour, bool cross_hatched)
{
    colour_ = colour;
    cross_hatched_ = cross_hatched;
    update();
}

void GenderShape::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QColor colour(colour_.red, colour_.green, colour_.blue);
    const QRect inside = rect().adjusted(1, 1, -1, -1);
    if (cross_hatched_) {
        painter.fillRect(inside, Qt::white);
        painter.fillRect(inside, QBrush(colour.darker(140), Qt::DiagCrossPattern));
    } else {
        painter.fillRect(inside, colour);
    }
    painter.end();
    QFrame::paintEvent(event);
}

// ---- Load ----

frm_Pupil::frm_Pupil(QWidget* parent)
    : QWidget(parent, Qt::Window), data_Navigation_(QStringLiteral("data_Navigation"), navigation_error, module)
{
    setObjectName(QStringLiteral("frm_Pupil"));
    setWindowTitle(QStringLiteral("Pupil Details"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    Screen_Setup(this, true, Glob_Form_Colour());
    build();
    set_frame_colour(frame_status, Glob_Form_Colour());
    set_frame_colour(frame_Navigation, Glob_Form_Colour());
    txt_Status->clear();
    connect_commands();
    Setup_Controls();
    data_Navigation_.set_on_reposition([this] { on_reposition(); });
    resize(940, 640);
}

frm_Pupil::~frm_Pupil()
{
    // The fields go before the controls they watch.
    fields_.clear();
}

void frm_Pupil::build()
{
    auto* layout = new QVBoxLayout(this);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    // Thousands of entries: the width doesn't depend on them, and the list
    // draws only the rows in view.
    const NavigationFrame navigation = add_navigation_frame(this, layout, QStringLiteral("cmb_Navigation"), 30);
    frame_Navigation = navigation.frame;
    cmb_Navigation = navigation.names;
    cmd_First = navigation.first;
    cmd_Prev = navigation.prev;
    cmd_Next = navigation.next;
    cmd_Last = navigation.last;
    cmb_Navigation->setAccessibleName(QStringLiteral("Choose a Pupil"));
    if (auto* view = qobject_cast<QListView*>(cmb_Navigation->view()))
        view->setUniformItemSizes(true);

    layout->addWidget(build_header());

    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    SSTab1->addTab(build_family_page(), QStringLiteral("Family Details"));
    SSTab1->addTab(build_pupil_page(), QStringLiteral("Pupil Details"));
    SSTab1->addTab(build_courses_page(), QStringLiteral("Courses"));
    DBGrid_Exams_Taken = new DataGrid(this);
    DBGrid_Exams_Taken->setObjectName(QStringLiteral("DBGrid_Exams_Taken"));
    DBGrid_Exams_Taken->setAccessibleName(QStringLiteral("Exams"));
    DBGrid_Exams_Taken->setItemDelegateForColumn(1, new FormatDelegate(medium_date, false, DBGrid_Exams_Taken));
    DBGrid_Exams_Taken->setItemDelegateForColumn(2, new FormatDelegate(QStringLiteral("General Number"), true,
                                                                       DBGrid_Exams_Taken));
    SSTab1->addTab(DBGrid_Exams_Taken, QStringLiteral("Exams"));
    DBGrid_Festivals = new DataGrid(this);
    DBGrid_Festivals->setObjectName(QStringLiteral("DBGrid_Festivals"));
    DBGrid_Festivals->setAccessibleName(QStringLiteral("Festivals"));
    DBGrid_Festivals->setItemDelegateForColumn(1, new FormatDelegate(medium_date, false, DBGrid_Festivals));
    DBGrid_Festivals->setItemDelegateForColumn(3, new FormatDelegate(QStringLiteral("General Number"), true,
                                                                     DBGrid_Festivals));
    SSTab1->addTab(DBGrid_Festivals, QStringLiteral("Festivals"));
    SSTab1->addTab(build_accounts_page(), QStringLiteral("Accounts"));
    layout->addWidget(SSTab1, 1);

    auto* commands = new QHBoxLayout;
    commands->addStretch(1);
    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add New"));
    cmd_Update = make_button(this, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    cmd_Cancel = make_button(this, QStringLiteral("cmd_Cancel"), QStringLiteral("&Cancel"));
    cmd_Delete = make_button(this, QStringLiteral("cmd_Delete"), QStringLiteral("&Delete"));
    for (QPushButton* button : {cmd_Add, cmd_Update, cmd_Cancel, cmd_Delete})
        commands->addWidget(button);
    layout->addLayout(commands);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;
}

QLineEdit* frm_Pupil::line(QWidget* parent, const QString& name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 12);
    return edit;
}

// Who the pupil is, always in view: the family's and the pupil's names, the
// family to move the pupil to, and the keys.
QWidget* frm_Pupil::build_header()
{
    auto* area = new QWidget(this);
    area->setObjectName(QStringLiteral("header_area"));
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(4, 4, 4, 4);
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(1, 2);
    grid->setColumnMinimumWidth(2, 16);
    grid->setColumnStretch(3, 3);

    txt_Family_Name = line(area, QStringLiteral("txt_Family_Name"));
    txt_First_Name = line(area, QStringLiteral("txt_First_Name"));
    grid->addWidget(label_for(txt_Family_Name, QStringLiteral("Family Name :"), area), 0, 0, Qt::AlignRight);
    grid->addWidget(txt_Family_Name, 0, 1);
    grid->addWidget(label_for(txt_First_Name, QStringLiteral("First Name :"), area), 1, 0, Qt::AlignRight);
    grid->addWidget(txt_First_Name, 1, 1);

    cmb_Family_Names = new QComboBox(area);
    cmb_Family_Names->setObjectName(QStringLiteral("cmb_Family_Names"));
    cmb_Family_Names->setMinimumContentsLength(24);
    cmb_Family_Names->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmb_Family_Names->setMaxVisibleItems(20);
    if (auto* view = qobject_cast<QListView*>(cmb_Family_Names->view()))
        view->setUniformItemSizes(true);
    // The words stand over the list rather than beside it, so they name it for a screen reader.
    auto* choose = new QLabel(QStringLiteral("To Change the Family Name, select a new name here:"), area);
    cmb_Family_Names->setAccessibleName(choose->text());
    cmd_Add_Family = make_button(area, QStringLiteral("cmd_Add_Family"), QStringLiteral("Add New Fa&mily"));
    grid->addWidget(choose, 0, 3, 1, 2);
    grid->addWidget(cmb_Family_Names, 1, 3);
    grid->addWidget(cmd_Add_Family, 1, 4);

    // The keys, for reference; nobody types them.
    auto* keys = new QHBoxLayout;
    txt_Pupil_id = line(area, QStringLiteral("txt_Pupil_id"));
    txt_Family_id = line(area, QStringLiteral("txt_Family_id"));
    for (QLineEdit* key : {txt_Pupil_id, txt_Family_id}) {
        key->setReadOnly(true);
        key->setFocusPolicy(Qt::NoFocus);
        key->setMinimumWidth(key->fontMetrics().averageCharWidth() * 8);
        key->setMaximumWidth(key->fontMetrics().averageCharWidth() * 10);
    }
    keys->setSpacing(6);
    keys->addWidget(label_for(txt_Pupil_id, QStringLiteral("Pupil id"), area));
    keys->addWidget(txt_Pupil_id);
    keys->addSpacing(16);
    keys->addWidget(label_for(txt_Family_id, QStringLiteral("family id"), area));
    keys->addWidget(txt_Family_id);
    keys->addStretch(1);
    grid->addLayout(keys, 2, 1);
    return area;
}

QWidget* frm_Pupil::build_family_page()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("page_Family_Details"));
    auto* columns = new QHBoxLayout(page);
    columns->setSpacing(24);
    QGridLayout* left = field_grid();
    QGridLayout* right = field_grid();
    txt_Address = line(page, QStringLiteral("txt_Address"));
    txt_Address2 = line(page, QStringLiteral("txt_Address2"));
    txt_Address3 = line(page, QStringLiteral("txt_Address3"));
    txt_Address4 = line(page, QStringLiteral("txt_Address4"));
    txt_Post_Code = line(page, QStringLiteral("txt_Post_Code"));
    add_row(left, txt_Address, QStringLiteral("Address :"));
    txt_Address2->setAccessibleName(QStringLiteral("Address line 2"));
    left->addWidget(txt_Address2, left->rowCount(), 1);
    add_row(left, txt_Address3, QStringLiteral("Town :"));
    add_row(left, txt_Address4, QStringLiteral("County :"));
    add_row(left, txt_Post_Code, QStringLiteral("Post Code :"));
    txt_Phone1 = line(page, QStringLiteral("txt_Phone1"));
    txt_Phone2 = line(page, QStringLiteral("txt_Phone2"));
    txt_Correspondence = line(page, QStringLiteral("txt_Correspondence"));
    txt_Family_Marker = line(page, QStringLiteral("txt_Family_Marker"));
    txt_Family_Notes = new QPlainTextEdit(page);
    txt_Family_Notes->setObjectName(QStringLiteral("txt_Family_Notes"));
    txt_Family_Notes->setMinimumWidth(txt_Family_Notes->fontMetrics().averageCharWidth() * 16);
    add_row(right, txt_Phone1, QStringLiteral("Phone 1 :"));
    add_row(right, txt_Phone2, QStringLiteral("Phone 2 :"));
    add_row(right, txt_Correspondence, QStringLiteral("Correspondence :"));
    add_row(right, txt_Family_Marker, QStringLiteral("Marker :"));
    add_row(right, txt_Family_Notes, QStringLiteral("Notes :"), true);
    keep_rows_at_top(left);
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    return page;
}

QWidget* frm_Pupil::build_pupil_page()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("page_Pupil_Details"));
    auto* columns = new QHBoxLayout(page);
    columns->setSpacing(24);
    QGridLayout* left = field_grid();
    QGridLayout* right = field_grid();

    txt_Alt_Surname = line(page, QStringLiteral("txt_Alt_Surname"));
    txt_BirthDate = line(page, QStringLiteral("txt_BirthDate"));
    add_row(left, txt_Alt_Surname, QStringLiteral("Alternate Surname :"));
    add_row(left, txt_BirthDate, QStringLiteral("Date of Birth :"));

    // The age, years and months, worked out from the birth date.
    auto* age = new QHBoxLayout;
    txt_Age_Years = line(page, QStringLiteral("txt_Age_Years"));
    txt_Age_Months = line(page, QStringLiteral("txt_Age_Months"));
    for (QLineEdit* part : {txt_Age_Years, txt_Age_Months}) {
        part->setReadOnly(true);
        part->setFocusPolicy(Qt::NoFocus);
        part->setAlignment(Qt::AlignRight);
        part->setMinimumWidth(part->fontMetrics().averageCharWidth() * 5);
        part->setMaximumWidth(part->fontMetrics().averageCharWidth() * 6);
    }
    txt_Age_Years->setToolTip(QStringLiteral("years"));
    txt_Age_Years->setAccessibleName(QStringLiteral("Age in years"));
    txt_Age_Months->setToolTip(QStringLiteral("months"));
    txt_Age_Months->setAccessibleName(QStringLiteral("and months"));
    // The two numbers say what they count.
    age->addWidget(txt_Age_Years);
    age->addWidget(new QLabel(QStringLiteral("years"), page));
    age->addSpacing(8);
    age->addWidget(txt_Age_Months);
    age->addWidget(new QLabel(QStringLiteral("months"), page));
    age->addStretch(1);
    const int age_row = left->rowCount();
    left->addWidget(label_for(txt_Age_Years, QStringLiteral("Age"), page), age_row, 0, Qt::AlignRight);
    left->addLayout(age, age_row, 1);

    // Sex and hidden, with the shape that shows both at a glance.
    auto* sex = new QHBoxLayout;
    Opt_Male = new QRadioButton(QStringLiteral("Male"), page);
    Opt_Male->setObjectName(QStringLiteral("Opt_Male"));
    Opt_Female = new QRadioButton(QStringLiteral("Female"), page);
    Opt_Female->setObjectName(QStringLiteral("Opt_Female"));
    Chk_Hidden = new QCheckBox(QStringLiteral("Hidden?"), page);
    Chk_Hidden->setObjectName(QStringLiteral("Chk_Hidden"));
    Shape_Gender = new GenderShape(page);
    sex->addWidget(Opt_Male);
    sex->addWidget(Opt_Female);
    sex->addSpacing(12);
    sex->addWidget(Chk_Hidden);
    sex->addSpacing(12);
    sex->addWidget(Shape_Gender);
    sex->addStretch(1);
    left->addLayout(sex, left->rowCount(), 1);
    txt_Gender = line(page, QStringLiteral("txt_Gender"));
    txt_Gender->hide();

    txt_StartDate = line(page, QStringLiteral("txt_StartDate"));
    txt_Regn_Fee = line(page, QStringLiteral("txt_Regn_Fee"));
    txt_Pupil_Marker = line(page, QStringLiteral("txt_Pupil_Marker"));
    txt_Ethnicity = line(page, QStringLiteral("txt_Ethnicity"));
    txt_E_Mail = line(page, QStringLiteral("txt_E_Mail"));
    add_row(left, txt_StartDate, QStringLiteral("Start Date :"));
    add_row(left, txt_Regn_Fee, QStringLiteral("Registration :"));
    add_row(left, txt_Pupil_Marker, QStringLiteral("Type :"));
    add_row(left, txt_Ethnicity, QStringLiteral("Ethnicity :"));
    add_row(left, txt_E_Mail, QStringLiteral("E-Mail :"));
    keep_rows_at_top(left);

    // Four references, two to a row, under one label.
    auto* references = new QGridLayout;
    references->setSpacing(6);
    txt_Ref = line(page, QStringLiteral("txt_Ref"));
    txt_Ref2 = line(page, QStringLiteral("txt_Ref2"));
    txt_Ref3 = line(page, QStringLiteral("txt_Ref3"));
    txt_Ref4 = line(page, QStringLiteral("txt_Ref4"));
    for (QLineEdit* reference : {txt_Ref2, txt_Ref3, txt_Ref4})
        reference->setAccessibleName(QStringLiteral("References :"));
    references->addWidget(txt_Ref, 0, 0);
    references->addWidget(txt_Ref2, 0, 1);
    references->addWidget(txt_Ref3, 1, 0);
    references->addWidget(txt_Ref4, 1, 1);
    right->addWidget(label_for(txt_Ref, QStringLiteral("References :"), page), 0, 0, Qt::AlignRight | Qt::AlignTop);
    right->addLayout(references, 0, 1);
    txt_Medical = line(page, QStringLiteral("txt_Medical"));
    txt_Special_Needs = line(page, QStringLiteral("txt_Special_Needs"));
    txt_Pupil_Notes = new QPlainTextEdit(page);
    txt_Pupil_Notes->setObjectName(QStringLiteral("txt_Pupil_Notes"));
    txt_Pupil_Notes->setMinimumWidth(txt_Pupil_Notes->fontMetrics().averageCharWidth() * 16);
    add_row(right, txt_Medical, QStringLiteral("Medical Info :"));
    add_row(right, txt_Special_Needs, QStringLiteral("Special Needs :"));
    add_row(right, txt_Pupil_Notes, QStringLiteral("Pupil Notes :"), true);

    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    return page;
}

QWidget* frm_Pupil::build_courses_page()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("page_Courses"));
    auto* columns = new QHBoxLayout(page);
    columns->setSpacing(16);

    auto* taken = new QVBoxLayout;
    DBGrid_Courses_Taken = new DataGrid(page);
    DBGrid_Courses_Taken->setObjectName(QStringLiteral("DBGrid_Courses_Taken"));
    DBGrid_Courses_Taken->setAccessibleName(QStringLiteral("Courses"));
    taken->addWidget(DBGrid_Courses_Taken, 1);
    auto* remove = new QHBoxLayout;
    cmd_Reg_Delete = make_button(page, QStringLiteral("cmd_Reg_Delete"), QStringLiteral("&Remove from Course"));
    remove->addWidget(cmd_Reg_Delete);
    remove->addStretch(1);
    taken->addLayout(remove);
    columns->addLayout(taken, 3);

    auto* available = new QVBoxLayout;
    lst_Courses_Added = new QListWidget(page);
    lst_Courses_Added->setObjectName(QStringLiteral("lst_Courses_Added"));
    lst_Courses_Added->setSelectionMode(QAbstractItemView::MultiSelection);
    lst_Courses_Added->setAccessibleName(QStringLiteral("Available Courses :"));
    available->addWidget(label_for(lst_Courses_Added, QStringLiteral("Available Courses :"), page));
    available->addWidget(lst_Courses_Added, 1);
    columns->addLayout(available, 2);
    return page;
}

QWidget* frm_Pupil::build_accounts_page()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("page_Accounts"));
    auto* column = new QVBoxLayout(page);
    chk_Show_Outstanding = new QCheckBox(QStringLiteral("Only show Outstanding Invoices"), page);
    chk_Show_Outstanding->setObjectName(QStringLiteral("chk_Show_Outstanding"));
    column->addWidget(chk_Show_Outstanding);
    DBGrid_Accounts = new DataGrid(page);
    DBGrid_Accounts->setObjectName(QStringLiteral("DBGrid_Accounts"));
    DBGrid_Accounts->setAccessibleName(QStringLiteral("Accounts"));
    DBGrid_Accounts->setSelectionMode(QAbstractItemView::SingleSelection);
    // The invoice's day, without the time it was raised at.
    DBGrid_Accounts->setItemDelegateForColumn(0, new FormatDelegate(Glob_Date_Format(), false, DBGrid_Accounts));
    DBGrid_Accounts->setItemDelegateForColumn(2, new FormatDelegate(QStringLiteral("currency"), true, DBGrid_Accounts));
    DBGrid_Accounts->setItemDelegateForColumn(3, new FormatDelegate(QStringLiteral("currency"), true, DBGrid_Accounts));
    column->addWidget(DBGrid_Accounts, 1);
    auto* commands = new QHBoxLayout;
    cmd_Invoice_Receipt[1] = make_button(page, QStringLiteral("cmd_Invoice_Receipt_1"), QStringLiteral("View Invoice"));
    cmd_Invoice_Receipt[0] = make_button(page, QStringLiteral("cmd_Invoice_Receipt_0"), QStringLiteral("Make Payment"));
    commands->addWidget(cmd_Invoice_Receipt[1]);
    commands->addWidget(cmd_Invoice_Receipt[0]);
    commands->addStretch(1);
    column->addLayout(commands);
    return page;
}

void frm_Pupil::bind(QWidget* control, const QString& column, Half half)
{
    Field field;
    field.bound = make_bound_field(control, column);
    Q_ASSERT(field.bound);
    // The record set is read, never written: Update writes through the queries.
    field.bound->set_read_only(true);
    field.control = control;
    field.half = half;
    data_Navigation_.bind(field.bound.get());
    if (half != Half::Header) {
        set_field_colour(control, colours::At_Rest);
        // Enter in the family name chooses or starts a family instead.
        if (control != txt_Family_Name)
            Enter_To_Tab(control);
        control->installEventFilter(this);
    }
    fields_.push_back(std::move(field));
}

void frm_Pupil::connect_commands()
{
    connect(cmd_First, &QPushButton::clicked, this, &frm_Pupil::cmd_First_Click);
    connect(cmd_Prev, &QPushButton::clicked, this, &frm_Pupil::cmd_Prev_Click);
    connect(cmd_Next, &QPushButton::clicked, this, &frm_Pupil::cmd_Next_Click);
    connect(cmd_Last, &QPushButton::clicked, this, &frm_Pupil::cmd_Last_Click);
    connect(cmd_Add, &QPushButton::clicked, this, &frm_Pupil::cmd_Add_Click);
    connect(cmd_Update, &QPushButton::clicked, this, &frm_Pupil::cmd_Update_Click);
    connect(cmd_Cancel, &QPushButton::clicked, this, &frm_Pupil::cmd_Cancel_Click);
    connect(cmd_Delete, &QPushButton::clicked, this, &frm_Pupil::cmd_Delete_Click);
    connect(cmd_Add_Family, &QPushButton::clicked, this, &frm_Pupil::cmd_Add_Family_Click);
    connect(cmd_Reg_Delete, &QPushButton::clicked, this, &frm_Pupil::cmd_Reg_Delete_Click);
    for (int index = 0; index < 2; ++index)
        connect(cmd_Invoice_Receipt[index], &QPushButton::clicked, this, [this, index] { cmd_Invoice_Receipt_Click(index); });
    connect(cmb_Navigation, &QComboBox::activated, this, &frm_Pupil::cmb_Navigation_Click);
    connect(cmb_Family_Names, &QComboBox::activated, this, &frm_Pupil::cmb_Family_Names_Click);
    connect(chk_Show_Outstanding, &QCheckBox::clicked, this, &frm_Pupil::chk_Show_Outstanding_Click);
    connect(Opt_Male, &QRadioButton::clicked, this, [this] { gender_clicked(true, Chk_Hidden->isChecked()); });
    connect(Opt_Female, &QRadioButton::clicked, this, [this] { gender_clicked(false, Chk_Hidden->isChecked()); });
    connect(Chk_Hidden, &QCheckBox::clicked, this, [this] { gender_clicked(Opt_Male->isChecked(), Chk_Hidden->isChecked()); });
    connect(mnu_Exit, &QAction::triggered, this, &frm_Pupil::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Pupil::mnu_Help_Click);
}

void frm_Pupil::Setup_Controls()
{
    QString step = QStringLiteral("starting data_Navigation");
    HourGlass hour_glass;
    // Every field to its column of data_Navigation, which holds the pupil's
    // and the family's columns side by side.
    step = QStringLiteral("starting id boxes");
    bind(txt_Pupil_id, QStringLiteral("Pupil_id"), Half::Header);
    bind(txt_Family_id, QStringLiteral("Family_id"), Half::Header);
    step = QStringLiteral("starting text boxes for Pupil");
    const std::pair<QWidget*, const char*> pupil_columns[] = {
        {txt_First_Name, "Pupil_Firstname"},      {txt_Alt_Surname, "Pupil_Surname"},
        {txt_BirthDate, "Pupil_Birthdate"},       {txt_Gender, "Pupil_Gender"},
        {txt_Ref, "Pupil_Ref_Num"},               {txt_Ref2, "Pupil_Ref_Num2"},
        {txt_Ref3, "Pupil_Ref_Num3"},             {txt_Ref4, "Pupil_Ref_Num4"},
        {txt_Medical, "Pupil_Medical"},           {txt_Pupil_Marker, "Pupil_Marker"},
        {txt_E_Mail, "Pupil_E_Mail"},             {txt_Special_Needs, "Pupil_Special_Needs"},
        {txt_Pupil_Notes, "Pupil_Notes"},         {txt_StartDate, "Pupil_StartDate"},
        {txt_Regn_Fee, "Pupil_Regn_Fee"},         {txt_Ethnicity, "Pupil_Ethnicity"},
    };
    for (const auto& [control, column] : pupil_columns)
        bind(control, QString::fromLatin1(column), Half::Pupil);
    step = QStringLiteral("starting text boxes for Families");
    const std::pair<QWidget*, const char*> family_columns[] = {
        {txt_Family_Name, "Family_Name"},     {txt_Address, "Family_Address"},
        {txt_Address2, "Family_Address2"},    {txt_Address3, "Family_Address3"},
        {txt_Address4, "Family_Address4"},    {txt_Post_Code, "Family_PostCode"},
        {txt_Phone1, "Family_Phone_1"},       {txt_Phone2, "Family_Phone_2"},
        {txt_Correspondence, "Family_Correspondence"}, {txt_Family_Marker, "Family_Marker"},
        {txt_Family_Notes, "Family_Notes"},
    };
    for (const auto& [control, column] : family_columns)
        bind(control, QString::fromLatin1(column), Half::Family);
    step = QStringLiteral("continuing text boxes for Families");
    connect(txt_Gender, &QLineEdit::textChanged, this, &frm_Pupil::txt_Gender_Changed);

    // Each control reports its own failure; the log also gets the step it stopped at.
    const auto stopped = [&step] {
        Report_Error(report::Trace, QStringLiteral("Unexpected error "), engine::mb::Critical, module,
                     QStringLiteral("Setup_Controls - ") + step);
    };
    step = QStringLiteral("refreshing data_navigation");
    if (!data_Navigation_.Refresh(Current_Db(), QStringLiteral("Qry_Select_Pupil_Details"))) {
        stopped();
        return;
    }
    const int pupil_id = record_value(QStringLiteral("Pupil_id")).toInt();
    const int family_id = record_value(QStringLiteral("Pupil_Family_id")).toInt();
    step = QStringLiteral("starting data_Exams_Taken");
    if (!open_exams(pupil_id)) {
        stopped();
        return;
    }
    step = QStringLiteral("starting data_Festivals");
    if (!open_festivals(pupil_id)) {
        stopped();
        return;
    }
    step = QStringLiteral("starting data_Courses_Taken");
    if (!open_courses(pupil_id)) {
        stopped();
        return;
    }
    step = QStringLiteral("starting data_Accounts");
    if (!open_accounts(family_id, QStringLiteral("Qry_Select_Family_Invoices")))
        stopped();
}

// ---- Activate ----

void frm_Pupil::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_Pupil::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    data_Navigation_.Close();
    for (std::unique_ptr<engine::Recordset>* records : {&courses_taken_, &exams_taken_, &festivals_, &accounts_}) {
        if (*records)
            (*records)->Close();
    }
    event->accept();
}

void frm_Pupil::Form_Activate()
{
    SSTab1->setCurrentIndex(0);
    Current_Name.clear();
    Pupil_Changed = false;
    Family_Changed = false;
    Gender_Loading = false;
    Clear_Family_Highlights();
    Clear_Pupil_Highlights();
    Setup_Navigation_List();
    Fill_Family_Names();
    Fill_Available_Courses();
    if (!data_Navigation_.Recordset())
        return;  // no database: the failure has been reported
    if (cmb_Navigation->count() == 0) {
        cmd_Add_Click();
        return;
    }
    int index = 0;
    if (Glob_Xfer_Pupil_id() != -1) {
        index = Glob_Search_Combo(cmb_Navigation, Glob_Xfer_Pupil_id());
        // A pupil deleted meanwhile: the list starts at the top.
        if (index < 0)
            index = 0;
    }
    cmb_Navigation->setCurrentIndex(index);
    cmb_Navigation_Click();
}

void frm_Pupil::Setup_Navigation_List()
{
    HourGlass hour_glass;
    ComboEntries entries(cmb_Navigation);
    engine::Recordset* records = data_Navigation_.Recordset();
    if (records && records->RecordCount() > 0) {
        std::unique_ptr<engine::Recordset> clone = records->Clone();
        if (!clone || !clone->MoveFirst()) {
            report_unexpected(QStringLiteral("Setup_Navigation_List"));
        } else {
            while (!clone->at_eof()) {
                entries.add(Format_Name(*clone), clone->Fields(QStringLiteral("Pupil_id")).toInt());
                if (!clone->MoveNext())
                    break;
            }
            clone->Close();
        }
        engine::Err().Clear();
    }
    entries.hand_over();
    if (!Current_Name.isEmpty())
        cmb_Navigation->setCurrentIndex(cmb_Navigation->findText(Current_Name));
}

void frm_Pupil::Fill_Family_Names()
{
    HourGlass hour_glass;
    ComboEntries entries(cmb_Family_Names);
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::Recordset> families =
        db ? db->OpenRecordset(QStringLiteral("Qry_Select_Family_Details")) : nullptr;
    if (families) {
        while (!families->at_eof()) {
            entries.add(families->Fields(QStringLiteral("Family_Name")).toString(),
                        families->Fields(QStringLiteral("Family_id")).toInt());
            if (!families->MoveNext())
                break;
        }
        families->Close();
    } else if (db) {
        report_unexpected(QStringLiteral("Fill_Family_Names"));
    }
    engine::Err().Clear();
    entries.hand_over();
}

void frm_Pupil::Fill_Available_Courses()
{
    lst_Courses_Added->clear();
    engine::Database* db = Current_Db();
    if (!db)
        return;
    std::unique_ptr<engine::Recordset> courses = db->OpenRecordset(Course_Order_Query());
    if (!courses) {
        report_unexpected(QStringLiteral("Fill_Available_Courses"));
        return;
    }
    while (!courses->at_eof()) {
        auto* item = new QListWidgetItem(courses->Fields(QStringLiteral("Course_Title")).toString(), lst_Courses_Added);
        item->setData(Qt::UserRole, courses->Fields(QStringLiteral("Course_id")).toInt());
        if (!courses->MoveNext())
            break;
    }
    courses->Close();
    engine::Err().Clear();
}

// ---- Moving through the pupils ----

bool frm_Pupil::Check_Changes()
{
    // Leaving the field being typed in makes its change count.
    cmd_Update->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    return Pupil_Changed || Family_Changed || !lst_Courses_Added->selectedItems().isEmpty();
}

void frm_Pupil::cmb_Navigation_Click()
{
    if (cmb_Navigation->currentIndex() == -1 || data_Navigation_.is_empty())
        return;
    if (Check_Changes()) {
        box(QStringLiteral("Cannot move - there are outstanding changes."));
        cmb_Navigation->setCurrentIndex(-1);
        return;
    }
    Move_Selected_Navigation();
}

void frm_Pupil::Move_Selected_Navigation()
{
    const QString routine = QStringLiteral("Move_Selected_Navigation");
    const int index = cmb_Navigation->currentIndex();
    if (index < 0)
        return;
    const QString criteria = QStringLiteral("Pupil_id = ") + QString::number(cmb_Navigation->itemData(index).toInt());
    // The pupil is looked for aside first, so that a list out of date leaves
    // the screen where it is.
    std::unique_ptr<engine::Recordset> clone = data_Navigation_.Recordset()->Clone();
    if (!clone || !clone->FindFirst(criteria)) {
        report_unexpected(routine);
        return;
    }
    if (clone->NoMatch()) {
        Report_Error(report::Detected, QStringLiteral("Unexpected error - pupil names are out of date"),
                     engine::mb::Information, module, routine);
        return;
    }
    clone->Close();
    if (!data_Navigation_.FindFirst(criteria)) {
        report_unexpected(routine);
        return;
    }
    if (data_Navigation_.NoMatch())
        Report_Error(report::Detected, QStringLiteral("Unexpected error - selected pupil name could not be found"),
                     engine::mb::Information, module, routine);
}

bool frm_Pupil::has_record() const
{
    const engine::Recordset* records = data_Navigation_.Recordset();
    return records && !records->at_bof() && !records->at_eof();
}

QVariant frm_Pupil::record_value(const QString& column) const
{
    if (!has_record())
        return QVariant();
    QVariant value;
    if (!data_Navigation_.Recordset()->get(column, value))
        engine::Err().Clear();
    return value;
}

void frm_Pupil::on_reposition()
{
    if (has_record())
        show_list_at_current();
    Display_Pupil();
}

void frm_Pupil::show_list_at_current()
{
    int index = Glob_Search_Combo(cmb_Navigation, record_value(QStringLiteral("Pupil_id")).toInt());
    if (index < 0)
        index = cmb_Navigation->findText(Format_Name(*data_Navigation_.Recordset()));
    cmb_Navigation->setCurrentIndex(index);
}

bool frm_Pupil::navigation_allowed()
{
    if (Check_Changes()) {
        box(QStringLiteral("There are changes outstanding - cannot move"));
        return false;
    }
    set_status(QString());
    if (data_Navigation_.is_empty()) {
        box(QStringLiteral("There are no records"));
        return false;
    }
    return true;
}

void frm_Pupil::cmd_First_Click()
{
    if (navigation_allowed() && !data_Navigation_.MoveFirst())
        report_unexpected(QStringLiteral("cmd_First"));
}

void frm_Pupil::cmd_Last_Click()
{
    if (navigation_allowed() && !data_Navigation_.MoveLast())
        report_unexpected(QStringLiteral("cmd_Last"));
}

void frm_Pupil::cmd_Next_Click()
{
    if (!navigation_allowed())
        return;
    if (!data_Navigation_.MoveNext()) {
        report_unexpected(QStringLiteral("cmd_Next"));
        return;
    }
    if (data_Navigation_.Recordset()->at_eof()) {
        set_status(QStringLiteral("There are no more records"));
        data_Navigation_.MoveLast();
    }
}

void frm_Pupil::cmd_Prev_Click()
{
    if (!navigation_allowed())
        return;
    if (!data_Navigation_.MovePrevious()) {
        report_unexpected(QStringLiteral("cmd_Prev"));
        return;
    }
    if (data_Navigation_.Recordset()->at_bof()) {
        set_status(QStringLiteral("There are no more records"));
        data_Navigation_.MoveFirst();
    }
}

// ---- Showing a pupil ----

void frm_Pupil::Display_Pupil()
{
    const QVariant birth_date = record_value(QStringLiteral("Pupil_Birthdate"));
    bound(txt_BirthDate)->fill(date_shown(birth_date));
    bound(txt_StartDate)->fill(date_shown(record_value(QStringLiteral("Pupil_StartDate"))));
    Display_Age_Of(birth_date);
    Display_Gender();
    const bool showing = has_record();
    open_pupil_grids(showing ? record_value(QStringLiteral("Pupil_id")).toInt() : 0);
    open_accounts(showing ? record_value(QStringLiteral("Pupil_Family_id")).toInt() : 0,
                  chk_Show_Outstanding->isChecked() ? QStringLiteral("Qry_Select_Family_Invoices_Unpaid")
                                                    : QStringLiteral("Qry_Select_Family_Invoices_All"));
    if (showing)
        cmb_Family_Names->setCurrentIndex(Glob_Search_Combo(cmb_Family_Names, record_value(QStringLiteral("Family_id")).toInt()));
}

void frm_Pupil::Display_Age_Of(const QVariant& birth_date)
{
    QDateTime born;
    const bool known = !birth_date.isNull() && birth_date.isValid() && vb::CDate(birth_date, born);
    engine::Err().Clear();
    if (!known) {
        txt_Age_Years->clear();
        txt_Age_Months->clear();
        return;
    }
    const PupilAge age = Display_Age(born.date(), QDate::currentDate());
    txt_Age_Years->setText(QString::number(age.years));
    txt_Age_Months->setText(QString::number(age.months));
}

void frm_Pupil::Display_Gender()
{
    const GenderLook look = Gender_Look(txt_Gender->text());
    Shape_Gender->set_look(look.colour, look.cross_hatched);
    if (!look.known)
        return;
    const bool loading = Gender_Loading;
    Gender_Loading = true;
    Opt_Male->setChecked(look.sex == PupilSex::Male);
    Opt_Female->setChecked(look.sex == PupilSex::Female);
    Chk_Hidden->setChecked(look.hidden);
    Gender_Loading = loading;
}

namespace {

// Opens a parameter query for a grid, in place of the rows it showed.
bool reopen(DataGrid* grid, std::unique_ptr<engine::Recordset>& rows, const QString& query, const QString& parameter,
            int key, const QStringList& fields, const QStringList& headers, const QString& error_words,
            const QString& control)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> source = db ? db->QueryDefs(query) : nullptr;
    std::unique_ptr<engine::Recordset> opened =
        source && source->set_parameter(parameter, key) ? source->OpenRecordset() : nullptr;
    if (!opened) {
        if (engine::Err().Number == 0)
            engine::Err().Raise(engine::jet::ObjectClosed, QStringLiteral("There is no database open."));
        Report_Error(report::BoundControl,
                     error_words + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                     engine::mb::OkOnly, module, control + QStringLiteral("_Error"));
        grid->set_recordset(nullptr);
        rows.reset();
        return false;
    }
    grid->set_recordset(opened.get());
    grid->set_columns(fields, headers);
    rows = std::move(opened);
    return true;
}

}  // namespace

bool frm_Pupil::open_exams(int pupil_id)
{
    return reopen(DBGrid_Exams_Taken, exams_taken_, QStringLiteral("Qry_Select_Pupil_Exam_Details"),
                  QStringLiteral("par_Pupil_id"), pupil_id,
                  {QStringLiteral("Exam_Title"), QStringLiteral("Results_Date"), QStringLiteral("Results_Mark")},
                  {QStringLiteral("Title"), QStringLiteral("Date"), QStringLiteral("Mark")}, exams_error,
                  QStringLiteral("Data_Exams_Taken"));
}

bool frm_Pupil::open_festivals(int pupil_id)
{
    return reopen(DBGrid_Festivals, festivals_, QStringLiteral("Qry_Select_Pupil_Festival_Details"),
                  QStringLiteral("par_Pupil_id"), pupil_id,
                  {QStringLiteral("Activity_Title"), QStringLiteral("Results_Date"), QStringLiteral("Exam_Title"),
                   QStringLiteral("Results_Mark")},
                  {QStringLiteral("Festival"), QStringLiteral("Date"), QStringLiteral("Title"), QStringLiteral("Mark")},
                  festivals_error, QStringLiteral("Data_Festivals"));
}

bool frm_Pupil::open_courses(int pupil_id)
{
    return reopen(DBGrid_Courses_Taken, courses_taken_, QStringLiteral("Qry_Select_Pupil_Courses"),
                  QStringLiteral("par_Pupil_id"), pupil_id,
                  {QStringLiteral("Course_Title"), QStringLiteral("Location"), QStringLiteral("Description"),
                   QStringLiteral("Course_id")},
                  {QStringLiteral("Title"), QStringLiteral("Location"), QStringLiteral("Description"),
                   QStringLiteral("Course id")},
                  courses_error, QStringLiteral("Data_Courses_Taken"));
}

bool frm_Pupil::open_pupil_grids(int pupil_id)
{
    // Each grid on its own: one that fails leaves the others showing.
    const bool exams = open_exams(pupil_id);
    const bool festivals = open_festivals(pupil_id);
    const bool courses = open_courses(pupil_id);
    return exams && festivals && courses;
}

bool frm_Pupil::open_accounts(int family_id, const QString& query)
{
    return reopen(DBGrid_Accounts, accounts_, query, QStringLiteral("par_Family_id"), family_id,
                  {QStringLiteral("Invoice_Date"), QStringLiteral("Invoice_Reason"), QStringLiteral("Owed"),
                   QStringLiteral("Paid")},
                  {QStringLiteral("Invoice Date"), QStringLiteral("Reason"), QStringLiteral("Invoice Total"),
                   QStringLiteral("Received")},
                  accounts_error, QStringLiteral("Data_Accounts"));
}

void frm_Pupil::chk_Show_Outstanding_Click()
{
    Display_Pupil();
}

bool frm_Pupil::Display_Family(int family_id)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Family_Details_By_id")) : nullptr;
    std::unique_ptr<engine::Recordset> family =
        query && query->set_parameter(QStringLiteral("par_Family_id"), family_id) ? query->OpenRecordset() : nullptr;
    if (!family) {
        report_unexpected(QStringLiteral("Display_Family"));
        return false;
    }
    if (family->at_eof()) {
        // Reported under the routine's old label, as the log has always had it.
        Report_Error(report::Detected, QStringLiteral("Unexpected error - couldn't find family"), engine::mb::Information,
                     module, QStringLiteral("Update_Family"));
        return false;
    }
    for (Field& field : fields_) {
        if (field.half == Half::Family || field.control == txt_Family_id)
            field.bound->fill(family->Fields(field.bound->DataField()));
    }
    family->Close();
    engine::Err().Clear();
    return true;
}

// ---- Choosing or starting the pupil's family ----

void frm_Pupil::cmb_Family_Names_Click()
{
    const int index = cmb_Family_Names->currentIndex();
    if (index == -1)
        return;
    if (Family_Changed) {
        box(QStringLiteral("There are outstanding changes to the family."));
        return;
    }
    const int key = cmb_Family_Names->itemData(index).toInt();
    if (!Display_Family(key))
        return;
    // A new pupil, or a pupil moved to another family: the family goes with
    // the pupil's own changes, not the family's.
    const bool new_pupil = txt_Pupil_id->text().trimmed().isEmpty();
    if (new_pupil || key != record_value(QStringLiteral("Pupil_Family_id")).toInt()) {
        Pupil_Changed = true;
        bound(txt_Family_id)->fill(key);
        set_field_colour(txt_Family_Name, colours::Highlight);
    }
}

bool frm_Pupil::txt_family_name_Validate()
{
    const QString typed = txt_Family_Name->text();
    if (typed.contains(QLatin1Char('"'))) {
        box(QStringLiteral("The family name cannot include quotes"));
        return false;
    }
    if (typed.trimmed().isEmpty() || !bound(txt_Family_Name)->DataChanged() || Family_Changed)
        return true;
    const QString wanted = typed.toUpper();
    int found = -1;
    for (int i = 0; i < cmb_Family_Names->count() && found < 0; ++i)
        if (cmb_Family_Names->itemText(i).toUpper() == wanted)
            found = i;
    if (found >= 0) {
        cmb_Family_Names->setCurrentIndex(found);
        cmb_Family_Names_Click();
    } else {
        Family_Changed = true;
        Clear_Family(false);
        txt_Family_Name->setText(typed);
        cmb_Family_Names->setCurrentIndex(-1);
        set_status(QStringLiteral("Adding a new Family"));
    }
    set_field_colour(txt_Family_Name, colours::Highlight);
    Lock_Family(false);
    return true;
}

void frm_Pupil::cmd_Add_Family_Click()
{
    set_status(QString());
    if (Family_Changed
        && ask(QStringLiteral("There are changes to the Family already in progress")
               + QStringLiteral("Do you wish to cancel them? "))
               != engine::answer::Yes)
        return;
    if (!Pupil_Changed && txt_Pupil_id->text().trimmed().isEmpty()) {
        box(QStringLiteral("There is no current Pupil.") + QLatin1Char('\n')
            + QStringLiteral("Choose a Pupil to edit or press Add"));
        return;
    }
    Family_Changed = true;
    Pupil_Changed = true;
    Lock_Family(false);
    Clear_Family(true);
    SSTab1->setCurrentIndex(0);
    txt_Address->setFocus(Qt::OtherFocusReason);
}

void frm_Pupil::Lock_Family(bool locked)
{
    for (Field& field : fields_) {
        if (field.half != Half::Family || field.control == txt_Family_Name)
            continue;
        if (auto* edit = qobject_cast<QLineEdit*>(field.control))
            edit->setReadOnly(locked);
        else if (auto* text = qobject_cast<QPlainTextEdit*>(field.control))
            text->setReadOnly(locked);
    }
}

bool frm_Pupil::family_locked() const
{
    return txt_Address->isReadOnly();
}

// ---- Typing ----

bool frm_Pupil::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txt_Family_Name && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            validating_name_ = true;
            if (txt_family_name_Validate()) {
                SSTab1->setCurrentIndex(0);
                txt_Address->setFocus(Qt::TabFocusReason);
            }
            validating_name_ = false;
            return true;
        }
    }
    if (Is_Field_Left(event)) {
        auto* control = static_cast<QWidget*>(watched);
        Field* field = field_of(control);
        if (control == txt_Family_Name) {
            if (!validating_name_ && !txt_family_name_Validate())
                QTimer::singleShot(0, txt_Family_Name, [this] { txt_Family_Name->setFocus(Qt::OtherFocusReason); });
        } else if (field && field->half == Half::Family) {
            if (control == txt_Post_Code && !txt_Post_Code->isReadOnly()) {
                const QString upper = txt_Post_Code->text().toUpper();
                if (upper != txt_Post_Code->text())
                    txt_Post_Code->setText(upper);
            }
            Check_lostfocus_Family(control);
        } else if (field && field->half == Half::Pupil) {
            auto* date = qobject_cast<QLineEdit*>(control);
            if ((control == txt_BirthDate || control == txt_StartDate) && !date_field_Validate(date)) {
                QTimer::singleShot(0, date, [date] { date->setFocus(Qt::OtherFocusReason); });
                return QWidget::eventFilter(watched, event);
            }
            Check_lostfocus_Pupil(control);
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool frm_Pupil::date_field_Validate(QLineEdit* field)
{
    // Only a date typed is checked: passing through a field changes nothing.
    if (!bound(field)->DataChanged())
        return true;
    const bool birth = field == txt_BirthDate;
    switch (Check_Typed_Date(field->text(), QDate::currentDate(),
                             birth ? Birthdate_Future_Question() : Startdate_Future_Question())) {
    case TypedDate::Not_A_Date:
        return false;
    case TypedDate::Declined: {
        // Back to the date stored, or to none for a pupil not yet stored.
        const bool stored = !txt_Pupil_id->text().trimmed().isEmpty();
        const QString column = birth ? QStringLiteral("Pupil_Birthdate") : QStringLiteral("Pupil_StartDate");
        bound(field)->fill(stored ? date_shown(record_value(column)) : QVariant());
        if (birth)
            Display_Age_Of(field->text());
        return true;
    }
    case TypedDate::Accepted:
        if (birth)
            Display_Age_Of(field->text().trimmed().isEmpty() ? QVariant() : QVariant(field->text()));
        return true;
    }
    return true;
}

void frm_Pupil::Check_lostfocus_Family(QWidget* control)
{
    BoundField* field = bound(control);
    if (!field)
        return;
    const auto* edit = qobject_cast<QLineEdit*>(control);
    const auto* text = qobject_cast<QPlainTextEdit*>(control);
    if ((edit && edit->isReadOnly()) || (text && text->isReadOnly()))
        return;
    const bool no_family = txt_Family_id->text().trimmed().isEmpty();
    if (Family_Changed) {
        if (no_family ? !field->trimmed_text().isEmpty() : field->DataChanged())
            set_field_colour(control, colours::Highlight);
        return;
    }
    if (!field->DataChanged())
        return;
    if (no_family) {
        box(QStringLiteral("There is no family to edit. ") + QLatin1Char('\n') + QStringLiteral("Choose a Pupil to edit, or ")
            + QStringLiteral("press Add New"));
        return;
    }
    Family_Changed = true;
    set_field_colour(control, colours::Highlight);
}

void frm_Pupil::Check_lostfocus_Pupil(QWidget* control)
{
    BoundField* field = bound(control);
    if (!field || !field->DataChanged())
        return;
    const bool no_pupil = txt_Pupil_id->text().trimmed().isEmpty();
    if (Pupil_Changed && no_pupil && field->trimmed_text().isEmpty())
        return;
    if (!Pupil_Changed && no_pupil) {
        box(QStringLiteral("There is no Pupil to edit. ") + QLatin1Char('\n') + QStringLiteral("Choose a Pupil to edit, or ")
            + QStringLiteral("press Add New"));
        // What was typed with no pupil to take it is not kept.
        field->fill(QVariant());
        return;
    }
    Pupil_Changed = true;
    set_field_colour(control, colours::Highlight);
}

void frm_Pupil::gender_clicked(bool male, bool hidden)
{
    if (Gender_Loading)
        return;
    const QString letter = Gender_Letter(male, hidden);
    if (letter == txt_Gender->text())
        return;
    txt_Gender->setText(letter);
    // A letter the user changed counts as the pupil's change. (The field
    // also changes while the record is shown, when it isn't one.)
    Check_lostfocus_Pupil(txt_Gender);
}

void frm_Pupil::txt_Gender_Changed()
{
    Display_Gender();
}

// ---- Clearing ----

void frm_Pupil::Clear_Family(bool keep_name)
{
    for (Field& field : fields_) {
        if (field.half != Half::Family && field.control != txt_Family_id)
            continue;
        if (keep_name && field.control == txt_Family_Name)
            continue;
        field.bound->fill(QVariant());
    }
    Clear_Family_Highlights();
    open_accounts(0, QStringLiteral("Qry_Select_Family_Invoices_All"));
}

void frm_Pupil::Clear_Pupil()
{
    for (Field& field : fields_)
        if (field.half == Half::Pupil)
            field.bound->fill(QVariant());
    txt_Age_Years->clear();
    txt_Age_Months->clear();
    // No sex chosen yet for a new pupil.
    const bool loading = Gender_Loading;
    Gender_Loading = true;
    for (QRadioButton* option : {Opt_Male, Opt_Female}) {
        option->setAutoExclusive(false);
        option->setChecked(false);
        option->setAutoExclusive(true);
    }
    Chk_Hidden->setChecked(false);
    Gender_Loading = loading;
    Display_Gender();
    Clear_Pupil_Highlights();
    open_pupil_grids(0);
}

void frm_Pupil::Clear_Family_Highlights()
{
    for (Field& field : fields_)
        if (field.half == Half::Family)
            set_field_colour(field.control, colours::At_Rest);
}

void frm_Pupil::Clear_Pupil_Highlights()
{
    for (Field& field : fields_)
        if (field.half == Half::Pupil)
            set_field_colour(field.control, colours::At_Rest);
    // A family chosen for the pupil showed on the family's name.
    set_field_colour(txt_Family_Name, colours::At_Rest);
}

// ---- The commands ----

void frm_Pupil::cmd_Add_Click()
{
    set_status(QString());
    if (Check_Changes()) {
        box(QStringLiteral("There are changes already in progress"));
        return;
    }
    Pupil_Changed = true;
    bound(txt_Pupil_id)->fill(QVariant());
    bound(txt_Family_id)->fill(QVariant());
    Clear_Family(false);
    Clear_Pupil();
    cmb_Navigation->setCurrentIndex(-1);
    cmb_Family_Names->setCurrentIndex(-1);
    set_status(QStringLiteral("Adding a new Pupil"));
    SSTab1->setCurrentIndex(1);
    txt_First_Name->setFocus(Qt::OtherFocusReason);
    // Until a family is chosen or typed, its fields would belong to nobody.
    Lock_Family(true);
}

void frm_Pupil::cmd_Update_Click()
{
    if (!Check_Changes()) {
        set_status(QStringLiteral("No changes to update"));
        return;
    }
    set_status(QString());
    if (has_record())
        Current_Name = Format_Name(*data_Navigation_.Recordset());
    if (Family_Changed) {
        if (!Update_Family_Fields()) {
            set_status(QStringLiteral("error updating family"));
            return;
        }
        set_status(QStringLiteral("Family updated successfully"));
    }
    Clear_Family_Highlights();
    if (Pupil_Changed) {
        if (!Update_Pupil_Fields())
            return;
        set_status(QStringLiteral("Pupil updated successfully"));
    }
    if (!Update_Registers())
        return;
    Clear_Pupil_Highlights();
    refresh_after_change();
}

bool frm_Pupil::Update_Family_Fields()
{
    FamilyDetails family;
    family.name = txt_Family_Name->text();
    family.address = txt_Address->text();
    family.address2 = txt_Address2->text();
    family.address3 = txt_Address3->text();
    family.address4 = txt_Address4->text();
    family.post_code = txt_Post_Code->text();
    family.phone_1 = txt_Phone1->text();
    family.phone_2 = txt_Phone2->text();
    family.correspondence = txt_Correspondence->text();
    family.notes = txt_Family_Notes->toPlainText();
    family.marker = txt_Family_Marker->text();
    qint32 family_id = txt_Family_id->text().trimmed().toInt();
    switch (Update_Family(family, family_id)) {
    case FamilyWrite::Written:
        break;
    case FamilyWrite::Name_Missing:
        txt_Family_Name->setFocus(Qt::OtherFocusReason);
        return false;
    case FamilyWrite::Duplicate:
    case FamilyWrite::Failed:
        return false;
    }
    bound(txt_Family_id)->fill(family_id);
    Fill_Family_Names();
    cmb_Family_Names->setCurrentIndex(Glob_Search_Combo(cmb_Family_Names, family_id));
    Family_Changed = false;
    return true;
}

bool frm_Pupil::Update_Pupil_Fields()
{
    PupilDetails pupil;
    pupil.first_name = txt_First_Name->text();
    pupil.surname = txt_Alt_Surname->text();
    pupil.ref1 = txt_Ref->text();
    pupil.ref2 = txt_Ref2->text();
    pupil.ref3 = txt_Ref3->text();
    pupil.ref4 = txt_Ref4->text();
    pupil.medical = txt_Medical->text();
    pupil.marker = txt_Pupil_Marker->text();
    pupil.e_mail = txt_E_Mail->text();
    pupil.notes = txt_Pupil_Notes->toPlainText();
    pupil.special_needs = txt_Special_Needs->text();
    pupil.birth_date = txt_BirthDate->text();
    pupil.ethnicity = txt_Ethnicity->text();
    pupil.regn_fee = txt_Regn_Fee->text();
    pupil.start_date = txt_StartDate->text();
    pupil.gender = txt_Gender->text();
    switch (Validate_Pupil(pupil, txt_Family_id->text(), QDate::currentDate())) {
    case PupilField::None:
        break;
    case PupilField::First_Name:
        txt_First_Name->setFocus(Qt::OtherFocusReason);
        return false;
    case PupilField::Birth_Date:
        SSTab1->setCurrentIndex(1);
        txt_BirthDate->setFocus(Qt::OtherFocusReason);
        return false;
    case PupilField::Start_Date:
        SSTab1->setCurrentIndex(1);
        txt_StartDate->setFocus(Qt::OtherFocusReason);
        return false;
    case PupilField::Family_Name:
        txt_Family_Name->setFocus(Qt::OtherFocusReason);
        return false;
    }
    pupil.family_id = txt_Family_id->text().trimmed().toInt();
    Current_Name = Format_Name(txt_Family_Name->text(), txt_First_Name->text(), txt_Alt_Surname->text());
    qint32 pupil_id = txt_Pupil_id->text().trimmed().toInt();
    if (Update_Pupil(pupil, pupil_id) != PupilWrite::Written) {
        set_status(QStringLiteral("Error updating pupil"));
        return false;
    }
    bound(txt_Pupil_id)->fill(pupil_id);
    Pupil_Changed = false;
    return true;
}

bool frm_Pupil::Update_Registers()
{
    if (txt_Pupil_id->text().trimmed().isEmpty()) {
        Report_Error(report::Detected, QStringLiteral("Unexpected error - no pupil id"), engine::mb::Information, module,
                     QStringLiteral("Update_Registers"));
        return false;
    }
    const qint32 pupil_id = txt_Pupil_id->text().trimmed().toInt();
    bool all_added = true;
    for (QListWidgetItem* course : lst_Courses_Added->selectedItems()) {
        // A course the pupil is on already stays chosen, after its message.
        if (DB_Add_Pupil_To_Course(course->data(Qt::UserRole).toInt(), pupil_id, txt_First_Name->text()))
            course->setSelected(false);
        else
            all_added = false;
    }
    open_courses(pupil_id);
    return all_added;
}

// After a save or a deletion: the pupils again, at Current_Name.
void frm_Pupil::refresh_after_change()
{
    if (!data_Navigation_.Requery()) {
        data_Navigation_.report_error(QStringLiteral("Requery"));
        return;
    }
    Setup_Navigation_List();
    const int index = Current_Name.isEmpty() ? -1 : cmb_Navigation->findText(Current_Name);
    if (index < 0) {
        if (has_record())
            show_list_at_current();
        return;
    }
    cmb_Navigation->setCurrentIndex(index);
    cmb_Navigation_Click();
}

void frm_Pupil::cmd_Cancel_Click()
{
    if (!Check_Changes()) {
        set_status(QStringLiteral("Nothing to cancel"));
        return;
    }
    if (Family_Changed)
        set_status(txt_Family_id->text().trimmed().isEmpty() ? QStringLiteral("Add Family cancelled")
                                                             : QStringLiteral("Change Family cancelled"));
    if (Pupil_Changed)
        set_status(txt_Pupil_id->text().trimmed().isEmpty() ? QStringLiteral("Add Pupil cancelled")
                                                            : QStringLiteral("Change Pupil cancelled"));
    Family_Changed = false;
    Pupil_Changed = false;
    lst_Courses_Added->clearSelection();
    Clear_Family_Highlights();
    Clear_Pupil_Highlights();
    data_Navigation_.UpdateControls();
    if (has_record())
        show_list_at_current();
    Display_Pupil();
}

void frm_Pupil::cmd_Delete_Click()
{
    set_status(QString());
    if (Check_Changes()) {
        box(QStringLiteral("There are changes in progress - cannot delete"));
        return;
    }
    if (!has_record()) {
        box(QStringLiteral("There are no records to delete"));
        return;
    }
    engine::Recordset* records = data_Navigation_.Recordset();
    const QString first_name = records->Fields(QStringLiteral("Pupil_FirstName")).toString();
    const QString family_name = records->Fields(QStringLiteral("Family_Name")).toString();
    const QString who = first_name + QLatin1Char(' ') + family_name;
    if (ask(QStringLiteral("Do you really want to delete ") + who) != engine::answer::Yes) {
        set_status(QStringLiteral("Deletion cancelled"));
        return;
    }
    // The pupil to show afterwards: the next one, or the first after the last.
    Current_Name.clear();
    std::unique_ptr<engine::Recordset> next = records->Clone();
    if (next && next->set_bookmark(records->bookmark()) && next->MoveNext()) {
        if (next->at_eof())
            next->MoveFirst();
        if (!next->at_eof() && next->bookmark() != records->bookmark())
            Current_Name = Format_Name(*next);
    }
    engine::Err().Clear();
    const QString this_pupil = Format_Name(*records);
    if (DB_Delete_Pupil(records->Fields(QStringLiteral("Pupil_id")).toInt())) {
        set_status(who + QStringLiteral(" deleted but the Family still exists"));
    } else {
        set_status(QStringLiteral("Could not delete ") + who);
        Current_Name = this_pupil;
    }
    refresh_after_change();
}

void frm_Pupil::cmd_Reg_Delete_Click()
{
    const QList<engine::Bookmark> chosen = DBGrid_Courses_Taken->SelBookmarks();
    if (chosen.isEmpty()) {
        box(QStringLiteral("Please select a Course in the Register"));
        return;
    }
    if (txt_Pupil_id->text().trimmed().isEmpty()) {
        Report_Error(report::Detected, QStringLiteral("There is no pupil"), engine::mb::Information, module,
                     QStringLiteral("cmd_Reg_Delete_Click"));
        return;
    }
    if (box(QStringLiteral("Do you really want to remove the pupil") + QStringLiteral(" from the Register(s)?"),
            engine::mb::YesNo)
        != engine::answer::Yes)
        return;
    const qint32 pupil_id = txt_Pupil_id->text().trimmed().toInt();
    QString failures;
    for (const engine::Bookmark mark : chosen) {
        if (!courses_taken_ || !courses_taken_->set_bookmark(mark)) {
            Report_Error(report::BoundControl,
                         courses_grid_error + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                         engine::mb::OkOnly, module, QStringLiteral("DBGrid_Courses_Taken_Error"));
            continue;
        }
        const QString title = courses_taken_->Fields(QStringLiteral("Course_Title")).toString();
        if (courses_taken_->Fields(QStringLiteral("Pupil_id")).toInt() != pupil_id
            || !DB_Delete_Pupil_From_Course(courses_taken_->Fields(QStringLiteral("Course_id")).toInt(), pupil_id))
            failures += title + QStringLiteral(", ");
    }
    set_status(failures.isEmpty() ? QStringLiteral("Pupil successfully deleted from the Register")
                                   : QStringLiteral("The following courses could NOT be deleted") + failures);
    open_courses(pupil_id);
}

// ---- To the Invoices and Money Received screens ----

void frm_Pupil::cmd_Invoice_Receipt_Click(int index)
{
    if (!is_numeric_text(txt_Family_id->text()) || !is_numeric_text(txt_Pupil_id->text()))
        return;
    if (Check_Changes() && ask(exit_question) == engine::answer::Yes) {
        cmd_Update_Click();
        return;
    }
    const QList<engine::Bookmark> chosen = DBGrid_Accounts->SelBookmarks();
    if (chosen.isEmpty()) {
        box(QStringLiteral("Please select an invoice"));
        return;
    }
    if (!accounts_ || !accounts_->set_bookmark(chosen.front())) {
        Report_Error(report::BoundControl,
                     accounts_grid_error + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                     engine::mb::OkOnly, module, QStringLiteral("DBGrid_Accounts_Error"));
        return;
    }
    Glob_Xfer_Invoice_id() = accounts_->Fields(QStringLiteral("Invoice_id")).toInt();
    Glob_Xfer_Family_id() = txt_Family_id->text().trimmed().toInt();
    Glob_Xfer_Pupil_id() = txt_Pupil_id->text().trimmed().toInt();
    Go_To_Screen(this, index == 1 ? QStringLiteral("frm_Invoices") : QStringLiteral("frm_Receipts"));
}

// ---- Leaving ----

// Changes in progress are saved first when the user wants; the screen then
// stays, so that the outcome of the save can be seen.
bool frm_Pupil::leave_allowed()
{
    if (!Check_Changes())
        return true;
    if (ask(exit_question) == engine::answer::Yes) {
        cmd_Update_Click();
        return false;
    }
    Pupil_Changed = false;
    Family_Changed = false;
    lst_Courses_Added->clearSelection();
    return true;
}

void frm_Pupil::mnu_Exit_Click()
{
    if (!leave_allowed())
        return;
    Switch_Screen(this, nullptr, false);
}

void frm_Pupil::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Pupils);
}

// ---- Helpers ----

void frm_Pupil::set_status(const QString& text)
{
    txt_Status->setText(text);
}

frm_Pupil::Field* frm_Pupil::field_of(QWidget* control)
{
    for (Field& field : fields_)
        if (field.control == control)
            return &field;
    return nullptr;
}

BoundField* frm_Pupil::bound(QWidget* control)
{
    Field* field = field_of(control);
    return field ? field->bound.get() : nullptr;
}

void frm_Pupil::report_unexpected(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module, routine);
}
