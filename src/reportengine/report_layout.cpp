#include "reportengine/report_layout.h"

#include <cmath>

namespace reportengine {

QSizeF paper_size_mm(int paper_size, int orientation)
{
    QSizeF size(210, 297);
    if (paper_size == paper::A5)
        size = QSizeF(148, 210);
    else if (paper_size == paper::DL_Envelope)
        size = QSizeF(110, 220);
    if (orientation == orientation::Landscape)
        size.transpose();
    return size;
}

namespace {

QString two_digits(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

QString date_text(const QDate& d, const FieldFormat& f)
{
    static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QString day = two_digits(d.day());
    const QString month = f.month_in_letters ? QLatin1String(months[d.month() - 1]) : two_digits(d.month());
    const QString year = QString::number(d.year());
    const QString& s1 = f.date_separator_1;
    const QString& s2 = f.date_separator_2;
    switch (f.date_order) {
    case 0: return month + s1 + day + s2 + year;
    case 2: return year + s1 + month + s2 + day;
    default: return day + s1 + month + s2 + year;
    }
}

}  // namespace

QString formatted(const Value& value, const FieldFormat& format, const QLocale& locale)
{
    using T = FieldFormat::Type;
    if (value.is_null())
        return QString();
    switch (format.type) {
    case T::Number:
        if (value.kind() == Value::Kind::Number)
            return QString::number(value.as_number(), 'f', format.decimals);
        break;
    case T::Currency:
        if (value.kind() == Value::Kind::Number)
            return locale.toCurrencyString(value.as_number(), locale.currencySymbol(), format.decimals);
        break;
    case T::Date:
    case T::DateTime:
    case T::Time:
        if (value.kind() == Value::Kind::Date) {
            const QDateTime& dt = value.as_date();
            const QString time = two_digits(dt.time().hour()) + format.time_separator + two_digits(dt.time().minute());
            if (format.type == T::Time)
                return time;
            const QString date = date_text(dt.date(), format);
            return format.type == T::Date ? date : date + QLatin1Char(' ') + time;
        }
        break;
    case T::General:
    case T::Text:
    case T::Boolean:
        break;
    }
    if (value.kind() == Value::Kind::Date)
        return date_text(value.as_date().date(), format);
    return value.to_display_text();
}

namespace {

// The formula context while laying out: the row, the page, and summaries
// over the group the row is in.
class LayoutContext : public RowContext {
public:
    LayoutContext(const ReportDefinition& report, const ReportData& data, const ReportFormulas& formulas,
                  const std::vector<std::vector<int>>& group_starts, const LayoutSettings& settings)
        : RowContext(data, formulas), report_(report), data_(data), group_starts_(group_starts), settings_(settings)
    {
    }

    int page = 1;
    int pages = 1;

    std::optional<Value> summary(const QString& function, const FieldName& field,
                                 const std::optional<FieldName>& group) const override
    {
        const int column = data_.index_of(field);
        if (column < 0)
            return std::nullopt;
        int first = 0;
        int last = static_cast<int>(data_.rows.size());
        if (group) {
            const int level = level_of(*group);
            if (level < 0)
                return std::nullopt;
            range_of(level, row(), first, last);
        }
        return summarise(function, column, first, last);
    }
    int page_number() const override { return page; }
    int total_page_count() const override { return pages; }
    QDateTime print_date() const override { return settings_.print_date; }

    // The rows [first, last) of the instance of group `level` (0 outermost) that holds `row`.
    void range_of(int level, int row, int& first, int& last) const
    {
        const std::vector<int>& starts = group_starts_[level];
        auto next = std::upper_bound(starts.begin(), starts.end(), row);
        first = *(next - 1);
        last = next == starts.end() ? static_cast<int>(data_.rows.size()) : *next;
    }

private:
    int level_of(const FieldName& group) const
    {
        for (size_t g = 0; g < report_.groups.size(); ++g)
            if (report_.groups[g].field.trimmed().compare(group.written(), Qt::CaseInsensitive) == 0)
                return static_cast<int>(g);
        return -1;
    }

    std::optional<Value> summarise(const QString& function, int column, int first, int last) const
    {
        int count = 0;
        double sum = 0;
        Value best;
        for (int r = first; r < last; ++r) {
            const Value& v = data_.rows[r][column];
            if (v.is_null())
                continue;
            ++count;
            if (v.kind() == Value::Kind::Number)
                sum += v.as_number();
            bool clash = false;
            const auto order = best.is_null() ? std::optional<int>() : compare(v, best, clash);
            if (best.is_null() || (order && ((function == QLatin1String("maximum") && *order > 0)
                                             || (function == QLatin1String("minimum") && *order < 0))))
                best = v;
        }
        if (function == QLatin1String("count"))
            return Value::number(count);
        if (function == QLatin1String("sum"))
            return Value::number(sum);
        if (function == QLatin1String("average"))
            return count == 0 ? Value() : Value::number(sum / count);
        return best;
    }

    const ReportDefinition& report_;
    const ReportData& data_;
    const std::vector<std::vector<int>>& group_starts_;
    const LayoutSettings& settings_;
};

class Layout {
public:
    Layout(const ReportDefinition& report, const ReportFormulas& formulas, const ReportData& data,
           const SubreportLoader& subreports, const LayoutSettings& settings, PageModel& model, QString& error)
        : report_(report), formulas_(formulas), data_(data), subreports_(subreports), settings_(settings), model_(model),
          error_(error), context_(report, data, formulas, group_starts_, settings)
    {
    }

    bool run(int total_pages)
    {
        model_ = PageModel();
        model_.paper = paper_size_mm(report_.page.paper_size, report_.page.orientation);
        model_.records_read = static_cast<int>(data_.rows.size());
        context_.pages = total_pages;
        if (!find_groups() || !parse_formulas())
            return false;
        top_ = report_.page.margin_top;
        bottom_ = model_.paper.height() - report_.page.margin_bottom - area_height(page_footer_area());
        if (!start_page(true))
            return false;
        const int groups = static_cast<int>(report_.groups.size());
        for (int r = 0; r < static_cast<int>(data_.rows.size()); ++r) {
            if (!printed_[r])
                continue;
            const int changed = changed_level(r);
            if (r > first_printed_ && !close_groups(previous_printed_, changed))
                return false;
            for (int g = changed; g < groups; ++g)
                if (!open_group(g, r))
                    return false;
            if (!band(details_area(), r))
                return false;
            previous_printed_ = r;
        }
        if (previous_printed_ >= 0 && !close_groups(previous_printed_, 0))
            return false;
        if (!band(report_.area_count(), std::max(previous_printed_, 0)))
            return false;
        finish_page();
        return alerts();
    }

private:
    int details_area() const { return 3 + static_cast<int>(report_.groups.size()); }
    int page_footer_area() const { return report_.area_count() - 1; }
    int group_header_area(int level) const { return 3 + level; }
    int group_footer_area(int level) const { return report_.area_count() - 2 - level; }

    double area_height(int number) const
    {
        const ReportArea* area = const_cast<ReportDefinition&>(report_).area(number);
        double h = 0;
        if (area && !area->suppress)
            for (const ReportSection& s : area->sections)
                h += s.height;
        return h;
    }

    // Where each group instance starts, and which rows the group selection keeps.
    bool find_groups()
    {
        const int groups = static_cast<int>(report_.groups.size());
        const int rows = static_cast<int>(data_.rows.size());
        keys_.assign(rows, std::vector<Value>(groups));
        group_starts_.assign(groups, {});
        for (int g = 0; g < groups; ++g) {
            Formula key;
            if (!key.parse(report_.groups[g].field, QStringLiteral("group field"), error_))
                return false;
            for (int r = 0; r < rows; ++r) {
                context_.set_row(r);
                if (!key.evaluate(context_, keys_[r][g], error_))
                    return false;
            }
        }
        for (int r = 0; r < rows; ++r) {
            const int level = r == 0 ? 0 : key_change(r);
            for (int g = level; g < groups; ++g)
                group_starts_[g].push_back(r);
        }
        model_.groups_counted = groups > 0 ? static_cast<int>(group_starts_[0].size()) : 0;
        return select_groups();
    }

    // The first group level whose key differs from the row before; the number of groups when none does.
    int key_change(int r) const
    {
        for (size_t g = 0; g < keys_[r].size(); ++g) {
            bool clash = false;
            const Value& a = keys_[r][g];
            const Value& b = keys_[r - 1][g];
            const auto order = compare(a, b, clash);
            if (a.is_null() != b.is_null() || (order && *order != 0) || clash)
                return static_cast<int>(g);
        }
        return static_cast<int>(keys_[r].size());
    }

    int changed_level(int r) const { return r == first_printed_ ? 0 : key_change_between(previous_printed_, r); }
    int key_change_between(int a, int b) const
    {
        for (size_t g = 0; g < keys_[b].size(); ++g) {
            bool clash = false;
            const auto order = compare(keys_[a][g], keys_[b][g], clash);
            if (keys_[a][g].is_null() != keys_[b][g].is_null() || (order && *order != 0) || clash)
                return static_cast<int>(g);
        }
        return static_cast<int>(keys_[b].size());
    }

    // The group selection, tried on each outermost group with its summaries.
    bool select_groups()
    {
        const int rows = static_cast<int>(data_.rows.size());
        printed_.assign(rows, true);
        Formula selection;
        if (!selection.parse(report_.group_selection, QStringLiteral("group selection"), error_))
            return false;
        if (!selection.is_empty() && !report_.groups.empty()) {
            for (int start : group_starts_[0]) {
                int first = 0;
                int last = 0;
                context_.range_of(0, start, first, last);
                context_.set_row(start);
                bool selected = false;
                if (!selection.selects(context_, selected, error_))
                    return false;
                for (int r = first; r < last; ++r)
                    printed_[r] = selected;
            }
        }
        first_printed_ = static_cast<int>(std::find(printed_.begin(), printed_.end(), true) - printed_.begin());
        return true;
    }

    bool parse_formulas()
    {
        for (const QString& text : all_formula_texts(report_)) {
            if (parsed_.count(text))
                continue;
            Formula f;
            if (!f.parse(text, QStringLiteral("formula of %1:").arg(report_.file), error_))
                return false;
            parsed_.emplace(text, std::move(f));
        }
        return true;
    }

    bool value_of(const QString& text, int row, Value& value)
    {
        context_.set_row(row);
        const auto it = parsed_.find(text);
        if (it == parsed_.end()) {
            value = Value();
            return true;
        }
        return it->second.evaluate(context_, value, error_);
    }

    bool holds(const QString& condition, int row, bool& yes)
    {
        yes = false;
        if (condition.trimmed().isEmpty())
            return true;
        Value v;
        if (!value_of(condition, row, v))
            return false;
        yes = v.kind() == Value::Kind::Boolean && v.as_boolean();
        return true;
    }

    bool open_group(int level, int row)
    {
        const ReportGroup& group = report_.groups[level];
        if (group.keep_together) {
            int first = 0;
            int last = 0;
            context_.range_of(level, row, first, last);
            double needed = area_height(group_header_area(level)) + area_height(group_footer_area(level));
            needed += (last - first) * area_height(details_area());
            const double room = bottom_ - top_;
            if (needed <= room - page_header_height_ && y_ + needed > bottom_ && y_ > body_top_ && !new_page(row))
                return false;
        }
        return band(group_header_area(level), row);
    }

    bool close_groups(int last_row, int down_to)
    {
        for (int g = static_cast<int>(report_.groups.size()) - 1; g >= down_to; --g)
            if (!band(group_footer_area(g), last_row))
                return false;
        return true;
    }

    bool start_page(bool first)
    {
        model_.pages.emplace_back();
        context_.page = static_cast<int>(model_.pages.size());
        y_ = top_;
        if (first && !band(1, 0, true))
            return false;
        const double before = y_;
        if (!band(2, std::max(current_row_, 0), true))
            return false;
        page_header_height_ = y_ - before;
        body_top_ = y_;
        return true;
    }

    void finish_page()
    {
        const double saved = y_;
        y_ = model_.paper.height() - report_.page.margin_bottom - area_height(page_footer_area());
        band(page_footer_area(), std::max(current_row_, 0), true);
        y_ = saved;
    }

    bool new_page(int row)
    {
        finish_page();
        current_row_ = row;
        return start_page(false);
    }

    // Prints one area for a row; `fixed` areas (report header at the start, the
    // page's header and footer) never start a new page themselves.
    bool band(int number, int row, bool fixed = false)
    {
        if (number == 1 && !fixed)
            return true;  // the report header is printed with the first page
        const ReportArea* area = const_cast<ReportDefinition&>(report_).area(number);
        if (!area || area->suppress)
            return true;
        current_row_ = row;
        for (const ReportSection& section : area->sections) {
            bool suppressed = false;
            if (!holds(section.suppress_if, row, suppressed))
                return false;
            if (suppressed)
                continue;
            // A page break asked for after a section waits for something to print,
            // so that the last group leaves no empty page behind it.
            if (!fixed && page_break_pending_) {
                page_break_pending_ = false;
                if (!new_page(row))
                    return false;
            }
            if (!fixed && y_ + section.height > bottom_ && y_ > body_top_ && !new_page(row))
                return false;
            if (!place(section, number, row, report_.page.margin_left, y_, data_))
                return false;
            y_ += section.height;
            if (section.new_page_after && !fixed)
                page_break_pending_ = true;
        }
        return true;
    }

    bool place(const ReportSection& section, int area, int row, double left, double top, const ReportData&)
    {
        Page& page = model_.pages.back();
        TableRow table_row{area, {}};
        std::vector<std::pair<double, QString>> cells;
        for (const ReportObject& o : section.objects) {
            bool suppressed = false;
            if (!holds(o.suppress_if, row, suppressed))
                return false;
            if (suppressed)
                continue;
            PageItem item;
            item.rect = QRectF(left + o.x, top + o.y, o.width, o.height);
            item.area = area;
            item.font_family = o.font_family.isEmpty() ? report_.page.font_family : o.font_family;
            item.font_size = o.font_size > 0 ? o.font_size : report_.page.font_size;
            item.bold = o.bold;
            item.italic = o.italic;
            item.align = o.align;
            item.line_width = o.line_width;
            switch (o.kind) {
            case ObjectKind::Field: {
                Value v;
                if (!value_of(o.source, row, v)) {
                    error_ = QStringLiteral("The field %1 of %2 fails: %3").arg(o.source, report_.file, error_);
                    return false;
                }
                item.text = formatted(v, o.format, settings_.locale);
                cells.emplace_back(o.x, item.text);
                break;
            }
            case ObjectKind::Text:
                item.text = o.text;
                cells.emplace_back(o.x, item.text);
                break;
            case ObjectKind::Line: item.kind = PageItem::Kind::Line; break;
            case ObjectKind::Box: item.kind = PageItem::Kind::Box; break;
            case ObjectKind::Subreport:
                if (!subreport(o, item.rect, area))
                    return false;
                continue;
            }
            page.items.push_back(item);
        }
        std::stable_sort(cells.begin(), cells.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        for (const auto& cell : cells)
            table_row.cells << cell.second;
        if (!table_row.cells.isEmpty())
            model_.rows.push_back(table_row);
        return true;
    }

    // A subreport is laid out on its own into the object's rectangle: its
    // report header, its details and its report footer, cut at the rectangle's foot.
    bool subreport(const ReportObject& o, const QRectF& rect, int area)
    {
        if (!subreports_) {
            error_ = QStringLiteral("The subreport %1 cannot be read here.").arg(o.file);
            return false;
        }
        const Subreport* sub = subreports_(o.file, error_);
        if (!sub)
            return false;
        ReportDefinition inner = sub->definition;
        inner.page.margin_left = 0;
        inner.page.margin_top = 0;
        inner.page.margin_bottom = 0;
        PageModel inner_model;
        QString inner_error;
        Layout layout(inner, sub->formulas, sub->data, SubreportLoader(), settings_, inner_model, inner_error);
        if (!layout.run(1)) {
            error_ = QStringLiteral("The subreport %1 fails: %2").arg(o.file, inner_error);
            return false;
        }
        Page& page = model_.pages.back();
        for (const Page& inner_page : inner_model.pages)
            for (PageItem item : inner_page.items) {
                if (item.rect.top() >= rect.height())
                    continue;
                item.rect.translate(rect.topLeft());
                item.area = area;
                page.items.push_back(item);
            }
        return true;
    }

    bool alerts()
    {
        for (const ReportAlert& alert : report_.alerts) {
            Formula condition;
            if (!condition.parse(alert.condition, QStringLiteral("alert %1:").arg(alert.name), error_))
                return false;
            for (int r = 0; r < static_cast<int>(data_.rows.size()); ++r) {
                context_.set_row(r);
                bool yes = false;
                if (!condition.selects(context_, yes, error_))
                    return false;
                if (yes) {
                    model_.alert_messages << alert.message;
                    break;
                }
            }
        }
        return true;
    }

    const ReportDefinition& report_;
    const ReportFormulas& formulas_;
    const ReportData& data_;
    const SubreportLoader& subreports_;
    const LayoutSettings& settings_;
    PageModel& model_;
    QString& error_;

    std::vector<std::vector<Value>> keys_;       // [row][group level]
    std::vector<std::vector<int>> group_starts_;  // [group level] rows where an instance starts
    std::vector<bool> printed_;
    int first_printed_ = 0;
    int previous_printed_ = -1;
    int current_row_ = 0;
    std::map<QString, Formula> parsed_;
    LayoutContext context_;
    double top_ = 0, bottom_ = 0, y_ = 0, body_top_ = 0, page_header_height_ = 0;
    bool page_break_pending_ = false;
};

}  // namespace

bool lay_out_report(const ReportDefinition& report, const ReportFormulas& formulas, const ReportData& data,
                    const SubreportLoader& subreports, const LayoutSettings& settings, PageModel& model, QString& error)
{
    // Laid out once to count the pages, and again when a formula shows the count.
    Layout first(report, formulas, data, subreports, settings, model, error);
    if (!first.run(1))
        return false;
    if (!all_formula_texts(report).join(QLatin1Char(' ')).contains(QLatin1String("totalpagecount"), Qt::CaseInsensitive))
        return true;
    const int pages = static_cast<int>(model.pages.size());
    Layout second(report, formulas, data, subreports, settings, model, error);
    return second.run(pages);
}

}  // namespace reportengine
