// The Reports screen's controls: the list of reports at the left; at the
// right the criteria, where the report goes and the notices, in the order the
// work goes; the run button under them and the status line at the foot.

#include "ui/reports/frm_reports.h"

#include "reports/report_outputs.h"
#include "shell/app_globals.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

QLabel* make_label(QWidget* parent, const QString& name, const QString& caption = QString())
{
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

QRadioButton* make_option(QWidget* parent, const QString& name, const QString& caption)
{
    auto* option = new QRadioButton(caption, parent);
    option->setObjectName(name);
    return option;
}

QGroupBox* make_frame(QWidget* parent, const QString& name, const QString& caption)
{
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(name);
    set_frame_colour(frame, Glob_Form_Colour());
    return frame;
}

}  // namespace

void frm_Reports::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;
    mnu_Criteria = add_menu_before_help(menu, QStringLiteral("mnu_Criteria"), QStringLiteral("&Criteria"));

    // The reports, as long a list as the window allows.
    auto* left = new QVBoxLayout;
    lst_Reports = new QListWidget(this);
    lst_Reports->setObjectName(QStringLiteral("lst_Reports"));
    lst_Reports->setAccessibleName(QStringLiteral("Reports"));
    lst_Reports->setMinimumWidth(lst_Reports->fontMetrics().averageCharWidth() * 38);
    lst_Reports->setMinimumHeight(lst_Reports->fontMetrics().height() * 16);
    auto* list_label = new QLabel(QStringLiteral("&Reports :"), this);
    list_label->setBuddy(lst_Reports);
    left->addWidget(list_label);
    left->addWidget(lst_Reports, 1);

    auto* right = new QVBoxLayout;
    right->setSpacing(10);
    right->addWidget(build_params_frame());
    right->addWidget(build_output_frame());
    right->addWidget(build_messages_frame());
    cmd_Do = make_button(this, QStringLiteral("cmd_Do"), QStringLiteral("R&un Report"));
    cmd_Do->setAutoDefault(true);
    cmd_Do->setMinimumHeight(34);
    right->addWidget(cmd_Do);
    right->addStretch(1);

    auto* columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addLayout(left, 2);
    columns->addLayout(right, 3);
    layout->addLayout(columns, 1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;
}

QGroupBox* frm_Reports::build_params_frame()
{
    frame_Params = make_frame(this, QStringLiteral("frame_Params"), QStringLiteral("Selected Criteria"));
    auto* grid = new QGridLayout(frame_Params);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(6);
    const int requirement_width = fontMetrics().horizontalAdvance(QStringLiteral("Mandatory")) + 8;
    for (int kind = 0; kind < Param_Count; ++kind) {
        const QString caption = param_caption(kind);
        lbl_Reqmnt[kind] = make_label(frame_Params, QStringLiteral("lbl_Reqmnt_%1").arg(kind), caption);
        lbl_Optional[kind] = make_label(frame_Params, QStringLiteral("lbl_Optional_%1").arg(kind));
        lbl_Optional[kind]->setMinimumWidth(requirement_width);
        lbl_Optional[kind]->setAccessibleName(caption);
        lbl_All[kind] = make_label(frame_Params, QStringLiteral("lbl_All_%1").arg(kind));
        QFont bold = lbl_All[kind]->font();
        bold.setBold(true);
        lbl_All[kind]->setFont(bold);
        lbl_All[kind]->setMinimumWidth(lbl_All[kind]->fontMetrics().horizontalAdvance(QStringLiteral("Some")) + 4);
        lbl_All[kind]->setAccessibleName(caption);
        txt_Value[kind] = new QLineEdit(frame_Params);
        txt_Value[kind]->setObjectName(QStringLiteral("txt_Value_%1").arg(kind));
        txt_Value[kind]->setReadOnly(true);
        txt_Value[kind]->setAccessibleName(caption);
        txt_Value[kind]->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
        grid->addWidget(lbl_Reqmnt[kind], kind, 0);
        grid->addWidget(lbl_Optional[kind], kind, 1);
        grid->addWidget(lbl_All[kind], kind, 2);
        grid->addWidget(txt_Value[kind], kind, 3);
    }
    grid->setColumnStretch(3, 1);
    return frame_Params;
}

QGroupBox* frm_Reports::build_output_frame()
{
    frame_Output = make_frame(this, QStringLiteral("frame_Output"), QStringLiteral("Output to :"));
    auto* layout = new QVBoxLayout(frame_Output);

    auto* options = new QHBoxLayout;
    opt_Screen = make_option(frame_Output, QStringLiteral("opt_Screen"), QStringLiteral("Screen"));
    opt_Printer = make_option(frame_Output, QStringLiteral("opt_Printer"), QStringLiteral("Printer"));
    opt_File = make_option(frame_Output, QStringLiteral("opt_File"), QStringLiteral("File"));
    cmd_Printer = make_button(frame_Output, QStringLiteral("cmd_Printer"), QStringLiteral("Options"));
    for (QWidget* control : {static_cast<QWidget*>(opt_Screen), static_cast<QWidget*>(opt_Printer),
                             static_cast<QWidget*>(opt_File)})
        options->addWidget(control);
    options->addStretch(1);
    options->addWidget(cmd_Printer);
    layout->addLayout(options);

    // The paper the report asks for beside the printer's, so that a mismatch shows before printing.
    auto* papers = new QGridLayout;
    lbl_Report_Paper = make_label(frame_Output, QStringLiteral("lbl_Report_Paper"));
    lbl_Printer_Paper = make_label(frame_Output, QStringLiteral("lbl_Printer_Paper"));
    papers->addWidget(new QLabel(QStringLiteral("Report paper :"), frame_Output), 0, 0);
    papers->addWidget(lbl_Report_Paper, 0, 1);
    papers->addWidget(new QLabel(QStringLiteral("Printer paper :"), frame_Output), 1, 0);
    papers->addWidget(lbl_Printer_Paper, 1, 1);
    papers->setColumnStretch(1, 1);
    layout->addLayout(papers);

    // The kind of file, then its name, one under the other with their labels in a column.
    auto* file = new QGridLayout;
    lst_OutputFileType = new QListWidget(frame_Output);
    lst_OutputFileType->setObjectName(QStringLiteral("lst_OutputFileType"));
    lst_OutputFileType->setAccessibleName(QStringLiteral("File type"));
    for (const OutputKind& kind : output_kinds()) {
        auto* item = new QListWidgetItem(kind.text, lst_OutputFileType);
        item->setData(Qt::UserRole, kind.type);
    }
    lst_OutputFileType->setFixedHeight(lst_OutputFileType->sizeHintForRow(0) * lst_OutputFileType->count()
                                       + 2 * lst_OutputFileType->frameWidth() + 2);
    lbl_File_Type = make_label(frame_Output, QStringLiteral("lbl_File_Type"), QStringLiteral("File &type :"));
    lbl_File_Type->setBuddy(lst_OutputFileType);
    lbl_File_Type->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lbl_FileName = make_label(frame_Output, QStringLiteral("lbl_FileName"), QStringLiteral("File Name :"));
    txt_Filename = new QLineEdit(frame_Output);
    txt_Filename->setObjectName(QStringLiteral("txt_Filename"));
    lbl_FileName->setBuddy(txt_Filename);
    cmd_Select = make_button(frame_Output, QStringLiteral("cmd_Select"), QStringLiteral("&View Files"));
    file->addWidget(lbl_File_Type, 0, 0);
    file->addWidget(lst_OutputFileType, 0, 1, 1, 2);
    file->addWidget(lbl_FileName, 1, 0);
    file->addWidget(txt_Filename, 1, 1);
    file->addWidget(cmd_Select, 1, 2);
    file->setColumnStretch(1, 1);
    layout->addLayout(file);
    return frame_Output;
}

QGroupBox* frm_Reports::build_messages_frame()
{
    frame_messages = make_frame(this, QStringLiteral("frame_messages"), QStringLiteral("Notices"));
    auto* grid = new QGridLayout(frame_messages);
    opt_Course = make_option(frame_messages, QStringLiteral("opt_Course"), QStringLiteral("Course "));
    opt_Exam = make_option(frame_messages, QStringLiteral("opt_Exam"), QStringLiteral("Exam"));
    opt_Show = make_option(frame_messages, QStringLiteral("opt_Show"), QStringLiteral("Show"));
    opt_Outing = make_option(frame_messages, QStringLiteral("opt_Outing"), QStringLiteral("Outing"));
    opt_Festival = make_option(frame_messages, QStringLiteral("opt_Festival"), QStringLiteral("Festival"));
    opt_Spare = make_option(frame_messages, QStringLiteral("opt_Spare"), QStringLiteral("Spare"));
    QRadioButton* const in_order[] = {opt_Course, opt_Exam, opt_Show, opt_Outing, opt_Festival, opt_Spare};
    for (int index = 0; index < 6; ++index)
        grid->addWidget(in_order[index], index / 3, index % 3);
    return frame_messages;
}
