#include "ui/people/frm_pupil.h"

#include "courses/course_entry.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "people/pupil_age.h"
#include "people/pupil_gender.h"
#include "people/pupil_name.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/report_numbers.h"
#include "shell/transfer_ids.h"
#include "ui/people/frm_pupil_words.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/bound_fields.h"
#include "ui/toolkit/combo_entries.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/format_delegate.h"
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

using namespace pupil_screen;

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
    add_field_row(left, txt_Address, QStringLiteral("Address :"));
    txt_Address2->setAccessibleName(QStringLiteral("Address line 2"));
    left->addWidget(txt_Address2, left->rowCount(), 1);
    add_field_row(left, txt_Address3, QStringLiteral("Town :"));
    add_field_row(left, txt_Address4, QStringLiteral("County :"));
    add_field_row(left, txt_Post_Code, QStringLiteral("Post Code :"));
    txt_Phone1 = line(page, QStringLiteral("txt_Phone1"));
    txt_Phone2 = line(page, QStringLiteral("txt_Phone2"));
    txt_Correspondence = line(page, QStringLiteral("txt_Correspondence"));
    txt_Family_Marker = line(page, QStringLiteral("txt_Family_Marker"));
    txt_Family_Notes = new QPlainTextEdit(page);
    txt_Family_Notes->setObjectName(QStringLiteral("txt_Family_Notes"));
    txt_Family_Notes->setMinimumWidth(txt_Family_Notes->fontMetrics().averageCharWidth() * 16);
    add_field_row(right, txt_Phone1, QStringLiteral("Phone 1 :"));
    add_field_row(right, txt_Phone2, QStringLiteral("Phone 2 :"));
    add_field_row(right, txt_Correspondence, QStringLiteral("Correspondence :"));
    add_field_row(right, txt_Family_Marker, QStringLiteral("Marker :"));
    add_field_row(right, txt_Family_Notes, QStringLiteral("Notes :"), true);
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
    add_field_row(left, txt_Alt_Surname, QStringLiteral("Alternate Surname :"));
    add_field_row(left, txt_BirthDate, QStringLiteral("Date of Birth :"));

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
    add_field_row(left, txt_StartDate, QStringLiteral("Start Date :"));
    add_field_row(left, txt_Regn_Fee, QStringLiteral("Registration :"));
    add_field_row(left, txt_Pupil_Marker, QStringLiteral("Type :"));
    add_field_row(left, txt_Ethnicity, QStringLiteral("Ethnicity :"));
    add_field_row(left, txt_E_Mail, QStringLiteral("E-Mail :"));
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
    add_field_row(right, txt_Medical, QStringLiteral("Medical Info :"));
    add_field_row(right, txt_Special_Needs, QStringLiteral("Special Needs :"));
    add_field_row(right, txt_Pupil_Notes, QStringLiteral("Pupil Notes :"), true);

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
