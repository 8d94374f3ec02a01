#include "reportengine/report_file.h"

#include "reportengine/report_file_words.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

namespace reportengine {

namespace {

using namespace file_words;

// Reads one file strictly: every element and attribute must be one the format knows.
class Reader {
public:
    Reader(const QByteArray& xml, const QString& path, ReportFileError& error) : xml_(xml), error_(error)
    {
        error_ = {path, 0, QString()};
    }

    bool run(ReportDefinition& report)
    {
        report = ReportDefinition();
        report.file = error_.file;
        if (!xml_.readNextStartElement())
            return fail(xml_.hasError() ? xml_.errorString() : QStringLiteral("The file holds no report."));
        if (xml_.name() != QLatin1String("report"))
            return fail(QStringLiteral("A report file begins with <report>, not <%1>.").arg(xml_.name()));
        if (!attributes({QStringLiteral("title"), QStringLiteral("version")}))
            return false;
        report.title = attribute(QStringLiteral("title"));
        const QString version = attribute(QStringLiteral("version"), QStringLiteral("1"));
        if (version != QLatin1String("1"))
            return fail(QStringLiteral("Version %1 of the format is not known; this program reads version 1.").arg(version));
        if (!children(report))
            return false;
        if (xml_.hasError())
            return fail(xml_.errorString());
        report.complete_areas();
        return true;
    }

private:
    bool fail(const QString& message)
    {
        error_.line = static_cast<int>(xml_.lineNumber());
        error_.message = message;
        return false;
    }

    // The element's attributes must be among `known`.
    bool attributes(const QStringList& known)
    {
        for (const QXmlStreamAttribute& a : xml_.attributes())
            if (!known.contains(a.name().toString()))
                return fail(QStringLiteral("<%1> has no attribute '%2'.").arg(xml_.name(), a.name()));
        return true;
    }
    QString attribute(const QString& name, const QString& otherwise = QString()) const
    {
        return xml_.attributes().hasAttribute(name) ? xml_.attributes().value(name).toString() : otherwise;
    }
    bool required(const QString& name, QString& value)
    {
        if (!xml_.attributes().hasAttribute(name))
            return fail(QStringLiteral("<%1> needs the attribute '%2'.").arg(xml_.name(), name));
        value = attribute(name);
        return true;
    }
    bool number(const QString& name, double& value)
    {
        if (!xml_.attributes().hasAttribute(name))
            return true;
        bool ok = false;
        const double read = attribute(name).toDouble(&ok);
        if (!ok || read < 0)
            return fail(QStringLiteral("'%1' of <%2> must be a number of millimetres or points, not '%3'.")
                            .arg(name, xml_.name(), attribute(name)));
        value = read;
        return true;
    }
    bool whole(const QString& name, int& value, int low, int high)
    {
        if (!xml_.attributes().hasAttribute(name))
            return true;
        bool ok = false;
        const int read = attribute(name).toInt(&ok);
        if (!ok || read < low || read > high)
            return fail(QStringLiteral("'%1' of <%2> must be a whole number from %3 to %4, not '%5'.")
                            .arg(name, xml_.name())
                            .arg(low)
                            .arg(high)
                            .arg(attribute(name)));
        value = read;
        return true;
    }
    bool flag(const QString& name, bool& value)
    {
        if (!xml_.attributes().hasAttribute(name))
            return true;
        const QString text = attribute(name);
        if (text != QLatin1String("true") && text != QLatin1String("false"))
            return fail(QStringLiteral("'%1' of <%2> must be true or false, not '%3'.").arg(name, xml_.name(), text));
        value = text == QLatin1String("true");
        return true;
    }
    template <typename T>
    bool word(const QString& name, const QHash<QString, T>& words, T& value)
    {
        if (!xml_.attributes().hasAttribute(name))
            return true;
        const auto it = words.constFind(attribute(name));
        if (it == words.constEnd()) {
            QStringList known = words.keys();
            known.sort();
            return fail(QStringLiteral("'%1' of <%2> must be one of %3, not '%4'.")
                            .arg(name, xml_.name(), known.join(QStringLiteral(", ")), attribute(name)));
        }
        value = it.value();
        return true;
    }
    bool text_only(QString& text)
    {
        text = xml_.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        return !xml_.hasError() || fail(xml_.errorString());
    }
    bool unknown_element() { return fail(QStringLiteral("<%1> is not an element the format knows here.").arg(xml_.name())); }

    bool children(ReportDefinition& r)
    {
        QSet<QString> seen;
        while (xml_.readNextStartElement()) {
            const QString name = xml_.name().toString();
            static const QSet<QString> once = {QStringLiteral("page"), QStringLiteral("printer"), QStringLiteral("tables"),
                                               QStringLiteral("recordSelection"), QStringLiteral("groupSelection")};
            if (once.contains(name) && seen.contains(name))
                return fail(QStringLiteral("<%1> may stand only once in a report.").arg(name));
            seen.insert(name);
            bool ok = false;
            if (name == QLatin1String("page"))
                ok = page(r.page);
            else if (name == QLatin1String("printer"))
                ok = printer(r.printer);
            else if (name == QLatin1String("tables"))
                ok = tables(r);
            else if (name == QLatin1String("recordSelection"))
                ok = attributes({}) && text_only(r.record_selection);
            else if (name == QLatin1String("groupSelection"))
                ok = attributes({}) && text_only(r.group_selection);
            else if (name == QLatin1String("formula"))
                ok = formula(r);
            else if (name == QLatin1String("sort"))
                ok = sort(r);
            else if (name == QLatin1String("group") && !r.areas.empty())
                return fail(QStringLiteral("<group> must stand before the areas, which are numbered by the groups."));
            else if (name == QLatin1String("group"))
                ok = group(r);
            else if (name == QLatin1String("alert"))
                ok = alert(r);
            else if (name == QLatin1String("area"))
                ok = area(r);
            else
                return unknown_element();
            if (!ok)
                return false;
        }
        return !xml_.hasError() || fail(xml_.errorString());
    }

    bool page(PageSetup& p)
    {
        if (!attributes({QStringLiteral("paper"), QStringLiteral("orientation"), QStringLiteral("marginLeft"),
                         QStringLiteral("marginTop"), QStringLiteral("marginRight"), QStringLiteral("marginBottom"),
                         QStringLiteral("font"), QStringLiteral("fontSize"), QStringLiteral("fitSetting")})
            || !word(QStringLiteral("paper"), paper_words(), p.paper_size)
            || !word(QStringLiteral("orientation"), orientation_words(), p.orientation)
            || !number(QStringLiteral("marginLeft"), p.margin_left) || !number(QStringLiteral("marginTop"), p.margin_top)
            || !number(QStringLiteral("marginRight"), p.margin_right) || !number(QStringLiteral("marginBottom"), p.margin_bottom)
            || !number(QStringLiteral("fontSize"), p.font_size) || !whole(QStringLiteral("fitSetting"), p.fit_setting, 0, 255))
            return false;
        p.font_family = attribute(QStringLiteral("font"), p.font_family);
        return empty_element();
    }

    bool printer(PrinterChoice& p)
    {
        if (!attributes({QStringLiteral("name"), QStringLiteral("driver"), QStringLiteral("port")}))
            return false;
        p = {attribute(QStringLiteral("name")), attribute(QStringLiteral("driver")), attribute(QStringLiteral("port"))};
        return empty_element();
    }

    bool empty_element()
    {
        if (xml_.readNextStartElement())
            return unknown_element();
        return !xml_.hasError() || fail(xml_.errorString());
    }

    bool tables(ReportDefinition& r)
    {
        if (!attributes({}))
            return false;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("table")) {
                ReportTable t;
                if (!attributes({QStringLiteral("name"), QStringLiteral("location")}) || !required(QStringLiteral("name"), t.name))
                    return false;
                t.location = attribute(QStringLiteral("location"));
                r.tables.push_back(t);
            } else if (xml_.name() == QLatin1String("link")) {
                ReportLink l;
                QString join = QStringLiteral("inner");
                if (!attributes({QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("join")})
                    || !required(QStringLiteral("from"), l.from) || !required(QStringLiteral("to"), l.to))
                    return false;
                join = attribute(QStringLiteral("join"), join);
                if (join != QLatin1String("inner") && join != QLatin1String("left"))
                    return fail(QStringLiteral("'join' of <link> must be inner or left, not '%1'.").arg(join));
                for (const QString& end : {l.from, l.to})
                    if (end.count(QLatin1Char('.')) != 1)
                        return fail(QStringLiteral("A link joins Table.Column to Table.Column, not '%1'.").arg(end));
                l.left_outer = join == QLatin1String("left");
                r.links.push_back(l);
            } else {
                return unknown_element();
            }
            if (!empty_element())
                return false;
        }
        return !xml_.hasError() || fail(xml_.errorString());
    }

    bool formula(ReportDefinition& r)
    {
        ReportFormula f;
        if (!attributes({QStringLiteral("name")}) || !required(QStringLiteral("name"), f.name) || !text_only(f.text))
            return false;
        if (r.formula(f.name))
            return fail(QStringLiteral("The formula %1 is defined twice.").arg(f.name));
        r.formulas.push_back(f);
        return true;
    }

    bool ordering(QString& field, bool& descending)
    {
        if (!required(QStringLiteral("field"), field))
            return false;
        const QString order = attribute(QStringLiteral("order"), QStringLiteral("ascending"));
        if (order != QLatin1String("ascending") && order != QLatin1String("descending"))
            return fail(QStringLiteral("'order' must be ascending or descending, not '%1'.").arg(order));
        descending = order == QLatin1String("descending");
        return true;
    }

    bool sort(ReportDefinition& r)
    {
        SortField s;
        if (!attributes({QStringLiteral("field"), QStringLiteral("order")}) || !ordering(s.field, s.descending))
            return false;
        r.sorts.push_back(s);
        return empty_element();
    }

    bool group(ReportDefinition& r)
    {
        ReportGroup g;
        if (!attributes({QStringLiteral("field"), QStringLiteral("order"), QStringLiteral("keepTogether")})
            || !ordering(g.field, g.descending) || !flag(QStringLiteral("keepTogether"), g.keep_together))
            return false;
        r.groups.push_back(g);
        return empty_element();
    }

    bool alert(ReportDefinition& r)
    {
        ReportAlert a;
        if (!attributes({QStringLiteral("name"), QStringLiteral("condition"), QStringLiteral("message")})
            || !required(QStringLiteral("name"), a.name) || !required(QStringLiteral("condition"), a.condition)
            || !required(QStringLiteral("message"), a.message))
            return false;
        r.alerts.push_back(a);
        return empty_element();
    }

    bool area(ReportDefinition& r)
    {
        ReportArea a;
        QString kind;
        if (!attributes({QStringLiteral("kind"), QStringLiteral("group"), QStringLiteral("suppress"), QStringLiteral("columns"),
                         QStringLiteral("columnWidth")})
            || !required(QStringLiteral("kind"), kind) || !word(QStringLiteral("kind"), area_words(), a.kind)
            || !flag(QStringLiteral("suppress"), a.suppress) || !columns(a))
            return false;
        const bool of_group = a.kind == AreaKind::GroupHeader || a.kind == AreaKind::GroupFooter;
        if (of_group != xml_.attributes().hasAttribute(QStringLiteral("group")))
            return fail(of_group ? QStringLiteral("A group's area names its group: group=\"1\" for the outermost.")
                                 : QStringLiteral("Only group headers and footers name a group."));
        if (of_group && !whole(QStringLiteral("group"), a.group, 1, static_cast<int>(r.groups.size())))
            return false;
        for (const ReportArea& earlier : r.areas)
            if (earlier.kind == a.kind && earlier.group == a.group)
                return fail(QStringLiteral("The %1 area stands twice.").arg(area_kind_name(a.kind)));
        while (xml_.readNextStartElement()) {
            if (xml_.name() != QLatin1String("section"))
                return unknown_element();
            ReportSection s;
            if (!section(s))
                return false;
            a.sections.push_back(std::move(s));
        }
        if (xml_.hasError())
            return fail(xml_.errorString());
        r.areas.push_back(std::move(a));
        return true;
    }

    // Columns across the page are for the details alone, and need their spacing.
    bool columns(ReportArea& a)
    {
        const bool given = xml_.attributes().hasAttribute(QStringLiteral("columns"));
        if (!given && !xml_.attributes().hasAttribute(QStringLiteral("columnWidth")))
            return true;
        if (a.kind != AreaKind::Details)
            return fail(QStringLiteral("Only the details are printed in columns."));
        if (!given || !xml_.attributes().hasAttribute(QStringLiteral("columnWidth")))
            return fail(QStringLiteral("Details in columns need both 'columns' and 'columnWidth'."));
        return whole(QStringLiteral("columns"), a.columns, 1, 20) && number(QStringLiteral("columnWidth"), a.column_width);
    }

    bool section(ReportSection& s)
    {
        if (!attributes({QStringLiteral("height"), QStringLiteral("suppressIf"), QStringLiteral("newPageAfter"),
                         QStringLiteral("resetPageNumberAfter")})
            || !number(QStringLiteral("height"), s.height) || !flag(QStringLiteral("newPageAfter"), s.new_page_after)
            || !flag(QStringLiteral("resetPageNumberAfter"), s.reset_page_number_after))
            return false;
        s.suppress_if = attribute(QStringLiteral("suppressIf"));
        while (xml_.readNextStartElement()) {
            const auto kind = object_words().constFind(xml_.name().toString());
            if (kind == object_words().constEnd())
                return unknown_element();
            ReportObject o;
            o.kind = kind.value();
            if (!object(o))
                return false;
            s.objects.push_back(std::move(o));
        }
        return !xml_.hasError() || fail(xml_.errorString());
    }

    bool object(ReportObject& o)
    {
        QStringList known = {QStringLiteral("name"), QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"),
                             QStringLiteral("height"), QStringLiteral("suppressIf")};
        const bool has_text = o.kind == ObjectKind::Field || o.kind == ObjectKind::Text;
        if (has_text)
            known << QStringLiteral("font") << QStringLiteral("fontSize") << QStringLiteral("bold") << QStringLiteral("italic")
                  << QStringLiteral("align");
        if (o.kind == ObjectKind::Field)
            known << QStringLiteral("source") << QStringLiteral("format") << QStringLiteral("decimals")
                  << QStringLiteral("dateOrder") << QStringLiteral("dateSeparator1") << QStringLiteral("dateSeparator2")
                  << QStringLiteral("timeSeparator") << QStringLiteral("monthInLetters") << QStringLiteral("canGrow");
        if (o.kind == ObjectKind::Line || o.kind == ObjectKind::Box)
            known << QStringLiteral("lineWidth");
        if (o.kind == ObjectKind::Subreport)
            known << QStringLiteral("file");
        if (!attributes(known) || !number(QStringLiteral("x"), o.x) || !number(QStringLiteral("y"), o.y)
            || !number(QStringLiteral("width"), o.width) || !number(QStringLiteral("height"), o.height)
            || !number(QStringLiteral("fontSize"), o.font_size) || !flag(QStringLiteral("bold"), o.bold)
            || !flag(QStringLiteral("italic"), o.italic) || !number(QStringLiteral("lineWidth"), o.line_width))
            return false;
        o.name = attribute(QStringLiteral("name"));
        o.suppress_if = attribute(QStringLiteral("suppressIf"));
        o.font_family = attribute(QStringLiteral("font"));
        const QString align = attribute(QStringLiteral("align"), QStringLiteral("left"));
        if (align != QLatin1String("left") && align != QLatin1String("right") && align != QLatin1String("center"))
            return fail(QStringLiteral("'align' must be left, right or center, not '%1'.").arg(align));
        o.align = align == QLatin1String("right") ? Qt::AlignRight : align == QLatin1String("center") ? Qt::AlignHCenter : Qt::AlignLeft;
        if (o.kind == ObjectKind::Field) {
            if (!required(QStringLiteral("source"), o.source) || !word(QStringLiteral("format"), format_words(), o.format.type)
                || !whole(QStringLiteral("decimals"), o.format.decimals, 0, 10)
                || !whole(QStringLiteral("dateOrder"), o.format.date_order, 0, 2)
                || !flag(QStringLiteral("monthInLetters"), o.format.month_in_letters)
                || !flag(QStringLiteral("canGrow"), o.can_grow))
                return false;
            o.format.date_separator_1 = attribute(QStringLiteral("dateSeparator1"), o.format.date_separator_1);
            o.format.date_separator_2 = attribute(QStringLiteral("dateSeparator2"), o.format.date_separator_2);
            o.format.time_separator = attribute(QStringLiteral("timeSeparator"), o.format.time_separator);
        }
        if (o.kind == ObjectKind::Subreport && !required(QStringLiteral("file"), o.file))
            return false;
        if (o.kind == ObjectKind::Text)
            return text_only(o.text);
        return empty_element();
    }

    QXmlStreamReader xml_;
    ReportFileError& error_;
};

}  // namespace

QString ReportFileError::text() const
{
    return QStringLiteral("%1, line %2: %3").arg(file).arg(line).arg(message);
}

bool read_report_text(const QByteArray& xml, const QString& path, ReportDefinition& report, ReportFileError& error)
{
    return Reader(xml, path, error).run(report);
}

bool read_report_file(const QString& path, ReportDefinition& report, ReportFileError& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = {path, 0, file.errorString()};
        return false;
    }
    return read_report_text(file.readAll(), path, report, error);
}

}  // namespace reportengine
