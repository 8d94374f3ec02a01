// Writing a report back in the text format the reader takes.

#include "reportengine/report_file.h"
#include "reportengine/report_file_words.h"

#include <QSaveFile>
#include <QXmlStreamWriter>

namespace reportengine {

namespace {

using namespace file_words;

void write_attribute_if(QXmlStreamWriter& w, const QString& name, const QString& value)
{
    if (!value.isEmpty())
        w.writeAttribute(name, value);
}

QString number_text(double value)
{
    return QString::number(value, 'g', 10);
}

void write_object(QXmlStreamWriter& w, const ReportObject& o)
{
    w.writeStartElement(word_of(object_words(), o.kind));
    write_attribute_if(w, QStringLiteral("name"), o.name);
    w.writeAttribute(QStringLiteral("x"), number_text(o.x));
    w.writeAttribute(QStringLiteral("y"), number_text(o.y));
    w.writeAttribute(QStringLiteral("width"), number_text(o.width));
    w.writeAttribute(QStringLiteral("height"), number_text(o.height));
    if (o.kind == ObjectKind::Field) {
        w.writeAttribute(QStringLiteral("source"), o.source);
        w.writeAttribute(QStringLiteral("format"), word_of(format_words(), o.format.type));
        w.writeAttribute(QStringLiteral("decimals"), QString::number(o.format.decimals));
        w.writeAttribute(QStringLiteral("dateOrder"), QString::number(o.format.date_order));
        w.writeAttribute(QStringLiteral("dateSeparator1"), o.format.date_separator_1);
        w.writeAttribute(QStringLiteral("dateSeparator2"), o.format.date_separator_2);
        w.writeAttribute(QStringLiteral("timeSeparator"), o.format.time_separator);
        if (o.format.month_in_letters)
            w.writeAttribute(QStringLiteral("monthInLetters"), QStringLiteral("true"));
        if (o.can_grow)
            w.writeAttribute(QStringLiteral("canGrow"), QStringLiteral("true"));
    }
    if (o.kind == ObjectKind::Field || o.kind == ObjectKind::Text) {
        write_attribute_if(w, QStringLiteral("font"), o.font_family);
        if (o.font_size > 0)
            w.writeAttribute(QStringLiteral("fontSize"), number_text(o.font_size));
        if (o.bold)
            w.writeAttribute(QStringLiteral("bold"), QStringLiteral("true"));
        if (o.italic)
            w.writeAttribute(QStringLiteral("italic"), QStringLiteral("true"));
        if (o.align != Qt::AlignLeft)
            w.writeAttribute(QStringLiteral("align"), align_word(o.align));
    }
    if (o.kind == ObjectKind::Line || o.kind == ObjectKind::Box)
        w.writeAttribute(QStringLiteral("lineWidth"), number_text(o.line_width));
    if (o.kind == ObjectKind::Subreport)
        w.writeAttribute(QStringLiteral("file"), o.file);
    write_attribute_if(w, QStringLiteral("suppressIf"), o.suppress_if);
    if (o.kind == ObjectKind::Text)
        w.writeCharacters(o.text);
    w.writeEndElement();
}

void write_area(QXmlStreamWriter& w, const ReportArea& a)
{
    if (a.sections.empty() && !a.suppress)
        return;
    w.writeStartElement(QStringLiteral("area"));
    w.writeAttribute(QStringLiteral("kind"), area_kind_name(a.kind));
    if (a.kind == AreaKind::GroupHeader || a.kind == AreaKind::GroupFooter)
        w.writeAttribute(QStringLiteral("group"), QString::number(a.group));
    if (a.suppress)
        w.writeAttribute(QStringLiteral("suppress"), QStringLiteral("true"));
    if (a.columns > 1) {
        w.writeAttribute(QStringLiteral("columns"), QString::number(a.columns));
        w.writeAttribute(QStringLiteral("columnWidth"), number_text(a.column_width));
    }
    for (const ReportSection& s : a.sections) {
        w.writeStartElement(QStringLiteral("section"));
        w.writeAttribute(QStringLiteral("height"), number_text(s.height));
        write_attribute_if(w, QStringLiteral("suppressIf"), s.suppress_if);
        if (s.new_page_after)
            w.writeAttribute(QStringLiteral("newPageAfter"), QStringLiteral("true"));
        if (s.reset_page_number_after)
            w.writeAttribute(QStringLiteral("resetPageNumberAfter"), QStringLiteral("true"));
        for (const ReportObject& o : s.objects)
            write_object(w, o);
        w.writeEndElement();
    }
    w.writeEndElement();
}

}  // namespace

QByteArray report_text(const ReportDefinition& r)
{
    QByteArray xml;
    QXmlStreamWriter w(&xml);
    w.setAutoFormatting(true);
    w.setAutoFormattingIndent(2);
    w.writeStartDocument();
    w.writeStartElement(QStringLiteral("report"));
    w.writeAttribute(QStringLiteral("version"), QStringLiteral("1"));
    write_attribute_if(w, QStringLiteral("title"), r.title);

    w.writeEmptyElement(QStringLiteral("page"));
    w.writeAttribute(QStringLiteral("paper"), word_of(paper_words(), r.page.paper_size));
    w.writeAttribute(QStringLiteral("orientation"), word_of(orientation_words(), r.page.orientation));
    w.writeAttribute(QStringLiteral("marginLeft"), number_text(r.page.margin_left));
    w.writeAttribute(QStringLiteral("marginTop"), number_text(r.page.margin_top));
    w.writeAttribute(QStringLiteral("marginRight"), number_text(r.page.margin_right));
    w.writeAttribute(QStringLiteral("marginBottom"), number_text(r.page.margin_bottom));
    w.writeAttribute(QStringLiteral("font"), r.page.font_family);
    w.writeAttribute(QStringLiteral("fontSize"), number_text(r.page.font_size));
    if (r.page.fit_setting != 0)
        w.writeAttribute(QStringLiteral("fitSetting"), QString::number(r.page.fit_setting));
    if (!r.printer.name.isEmpty() || !r.printer.driver.isEmpty() || !r.printer.port.isEmpty()) {
        w.writeEmptyElement(QStringLiteral("printer"));
        write_attribute_if(w, QStringLiteral("name"), r.printer.name);
        write_attribute_if(w, QStringLiteral("driver"), r.printer.driver);
        write_attribute_if(w, QStringLiteral("port"), r.printer.port);
    }
    w.writeStartElement(QStringLiteral("tables"));
    for (const ReportTable& t : r.tables) {
        w.writeEmptyElement(QStringLiteral("table"));
        w.writeAttribute(QStringLiteral("name"), t.name);
        write_attribute_if(w, QStringLiteral("location"), t.location);
    }
    for (const ReportLink& l : r.links) {
        w.writeEmptyElement(QStringLiteral("link"));
        w.writeAttribute(QStringLiteral("from"), l.from);
        w.writeAttribute(QStringLiteral("to"), l.to);
        w.writeAttribute(QStringLiteral("join"), l.left_outer ? QStringLiteral("left") : QStringLiteral("inner"));
    }
    w.writeEndElement();
    if (!r.record_selection.isEmpty())
        w.writeTextElement(QStringLiteral("recordSelection"), r.record_selection);
    if (!r.group_selection.isEmpty())
        w.writeTextElement(QStringLiteral("groupSelection"), r.group_selection);
    for (const ReportFormula& f : r.formulas) {
        w.writeStartElement(QStringLiteral("formula"));
        w.writeAttribute(QStringLiteral("name"), f.name);
        w.writeCharacters(f.text);
        w.writeEndElement();
    }
    for (const SortField& s : r.sorts) {
        w.writeEmptyElement(QStringLiteral("sort"));
        w.writeAttribute(QStringLiteral("field"), s.field);
        if (s.descending)
            w.writeAttribute(QStringLiteral("order"), QStringLiteral("descending"));
    }
    for (const ReportGroup& g : r.groups) {
        w.writeEmptyElement(QStringLiteral("group"));
        w.writeAttribute(QStringLiteral("field"), g.field);
        if (g.descending)
            w.writeAttribute(QStringLiteral("order"), QStringLiteral("descending"));
        if (g.keep_together)
            w.writeAttribute(QStringLiteral("keepTogether"), QStringLiteral("true"));
    }
    for (const ReportAlert& a : r.alerts) {
        w.writeEmptyElement(QStringLiteral("alert"));
        w.writeAttribute(QStringLiteral("name"), a.name);
        w.writeAttribute(QStringLiteral("condition"), a.condition);
        w.writeAttribute(QStringLiteral("message"), a.message);
    }
    for (const ReportArea& a : r.areas)
        write_area(w, a);
    w.writeEndElement();
    w.writeEndDocument();
    return xml;
}

bool write_report_file(const ReportDefinition& report, const QString& path, ReportFileError& error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(report_text(report)) < 0 || !file.commit()) {
        error = {path, 0, file.errorString()};
        return false;
    }
    return true;
}

}  // namespace reportengine
