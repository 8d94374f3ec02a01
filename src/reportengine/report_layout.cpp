#include "reportengine/report_layout.h"

#include "reportengine/layout_context.h"
#include "reportengine/text_measure.h"

#include <algorithm>
#include <map>

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

class Layout {
public:
    Layout(const ReportDefinition& report, const ReportFormulas& formulas, const ReportData& data,
           const SubreportLoader& subreports, const LayoutSettings& settings, PageModel& model, QString& error)
        : report_(report), formulas_(formulas), data_(data), subreports_(subreports), settings_(settings), model_(model),
          error_(error), context_(report, data, formulas, group_starts_, settings.print_date)
    {
    }

    // `page_counts`: for each page, the count of its run of pages (from the
    // last reset of the numbering); empty on the first pass, which counts them.
    bool run(const std::vector<int>& page_counts)
    {
        model_ = PageModel();
        model_.paper = paper_size_mm(report_.page.paper_size, report_.page.orientation);
        model_.records_read = static_cast<int>(data_.rows.size());
        page_counts_ = page_counts;
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

    // For each page, how many pages its numbering runs to.
    std::vector<int> page_counts() const
    {
        std::vector<int> counts(run_starts_.size());
        for (size_t p = 0; p < run_starts_.size(); ++p)
            counts[p] = static_cast<int>(std::count(run_starts_.begin(), run_starts_.end(), run_starts_[p]));
        return counts;
    }

private:
    int details_area() const { return 3 + static_cast<int>(report_.groups.size()); }
    int page_footer_area() const { return report_.area_count() - 1; }
    int group_header_area(int level) const { return 3 + level; }
    int group_footer_area(int level) const { return report_.area_count() - 2 - level; }
    const ReportArea* area_of(int number) const { return const_cast<ReportDefinition&>(report_).area(number); }

    double area_height(int number) const
    {
        const ReportArea* area = area_of(number);
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
            const int level = r == 0 ? 0 : key_change_between(r - 1, r);
            for (int g = level; g < groups; ++g)
                group_starts_[g].push_back(r);
        }
        model_.groups_counted = groups > 0 ? static_cast<int>(group_starts_[0].size()) : 0;
        return select_groups();
    }

    int changed_level(int r) const { return r == first_printed_ ? 0 : key_change_between(previous_printed_, r); }
    // The first group level whose key differs between two rows; the number of groups when none does.
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
            needed += (last - first) * area_height(details_area()) / std::max(1, area_of(details_area())->columns);
            const double room = bottom_ - top_;
            end_column_row();
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
        const int index = static_cast<int>(model_.pages.size()) - 1;
        if (restart_numbering_) {
            run_start_ = index;
            restart_numbering_ = false;
        }
        run_starts_.push_back(run_start_);
        context_.page = index - run_start_ + 1;
        context_.pages = index < static_cast<int>(page_counts_.size()) ? page_counts_[index] : 1;
        y_ = top_;
        column_ = 0;
        if (first && !band(1, 0, true))
            return false;
        const double before = y_;
        if (!band(2, std::max(current_row_, 0), true))
            return false;
        page_header_height_ = y_ - before;
        body_top_ = y_;
        return true;
    }

    // The page footer speaks of the last row printed on the page, not of the
    // row that is about to start the next one.
    void finish_page()
    {
        end_column_row();
        const double saved = y_;
        const int saved_row = current_row_;
        y_ = model_.paper.height() - report_.page.margin_bottom - area_height(page_footer_area());
        band(page_footer_area(), std::max(last_printed_row_, 0), true);
        y_ = saved;
        current_row_ = saved_row;
    }

    bool new_page(int row)
    {
        finish_page();
        current_row_ = row;
        return start_page(false);
    }

    // Details printed in columns stand side by side; anything else first
    // moves below the row of them.
    void end_column_row()
    {
        if (column_ > 0)
            y_ = column_top_ + column_row_height_;
        column_ = 0;
    }

    // Prints one area for a row; `fixed` areas (report header at the start, the
    // page's header and footer) never start a new page themselves.
    bool band(int number, int row, bool fixed = false)
    {
        if (number == 1 && !fixed)
            return true;  // the report header is printed with the first page
        const ReportArea* area = area_of(number);
        if (!area || area->suppress)
            return true;
        current_row_ = row;
        if (area->columns > 1)
            return band_in_columns(*area, number, row);
        if (!fixed)
            end_column_row();
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
            double height = 0;
            if (!section_height(section, row, height))
                return false;
            if (!fixed && y_ + height > bottom_ && y_ > body_top_ && !new_page(row))
                return false;
            if (!place(section, number, row, report_.page.margin_left, y_))
                return false;
            if (!fixed)
                last_printed_row_ = row;
            y_ += height;
            if (section.new_page_after && !fixed)
                page_break_pending_ = true;
            if (section.reset_page_number_after && !fixed)
                restart_numbering_ = true;
        }
        return true;
    }

    // One row of the details as one cell of a sheet: across, then down.
    bool band_in_columns(const ReportArea& area, int number, int row)
    {
        std::vector<const ReportSection*> shown;
        double height = 0;
        for (const ReportSection& section : area.sections) {
            bool suppressed = false;
            double h = 0;
            if (!holds(section.suppress_if, row, suppressed) || (!suppressed && !section_height(section, row, h)))
                return false;
            if (!suppressed) {
                shown.push_back(&section);
                height += h;
            }
        }
        if (column_ == 0) {
            if (page_break_pending_) {
                page_break_pending_ = false;
                if (!new_page(row))
                    return false;
            }
            if (y_ + height > bottom_ && y_ > body_top_ && !new_page(row))
                return false;
            column_top_ = y_;
            column_row_height_ = 0;
        }
        double y = column_top_;
        const double x = report_.page.margin_left + column_ * area.column_width;
        for (const ReportSection* section : shown) {
            double h = 0;
            if (!section_height(*section, row, h) || !place(*section, number, row, x, y))
                return false;
            y += h;
        }
        last_printed_row_ = row;
        column_row_height_ = std::max(column_row_height_, height);
        if (++column_ == area.columns)
            end_column_row();
        return true;
    }

    // The text of a field, and for a growing one the lines it takes.
    bool field_lines(const ReportObject& o, int row, QStringList& lines)
    {
        Value v;
        if (!value_of(o.source, row, v)) {
            error_ = QStringLiteral("The field %1 of %2 fails: %3").arg(o.source, report_.file, error_);
            return false;
        }
        const QString text = formatted(v, o.format, settings_.locale);
        // A little room is kept, so that a screen's coarser fonts never cut a line printed to fit.
        lines = o.can_grow ? wrapped_lines(text, o.width * 0.97, font_of(o)) : QStringList{text};
        return true;
    }

    TextFont font_of(const ReportObject& o) const
    {
        return TextFont{o.font_family.isEmpty() ? report_.page.font_family : o.font_family,
                        o.font_size > 0 ? o.font_size : report_.page.font_size, o.bold, o.italic};
    }

    // The section's height with its growing fields' lines: it grows when
    // their lines reach past its foot, and keeps the room below them otherwise.
    bool section_height(const ReportSection& section, int row, double& height)
    {
        height = section.height;
        for (const ReportObject& o : section.objects) {
            if (!o.can_grow || o.kind != ObjectKind::Field)
                continue;
            bool suppressed = false;
            QStringList lines;
            if (!holds(o.suppress_if, row, suppressed))
                return false;
            if (suppressed)
                continue;
            if (!field_lines(o, row, lines))
                return false;
            height = std::max(height, o.y + lines.size() * o.height);
        }
        return true;
    }

    bool place(const ReportSection& section, int area, int row, double left, double top)
    {
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
            const TextFont font = font_of(o);
            item.font_family = font.family;
            item.font_size = font.size;
            item.bold = o.bold;
            item.italic = o.italic;
            item.align = o.align;
            item.line_width = o.line_width;
            switch (o.kind) {
            case ObjectKind::Field: {
                QStringList lines;
                if (!field_lines(o, row, lines))
                    return false;
                cells.emplace_back(o.x, lines.join(QLatin1Char('\n')));
                for (const QString& line : lines) {
                    item.text = line;
                    model_.pages.back().items.push_back(item);
                    item.rect.translate(0, o.height);
                }
                continue;
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
            model_.pages.back().items.push_back(item);
        }
        std::stable_sort(cells.begin(), cells.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        for (const auto& cell : cells)
            table_row.cells << cell.second;
        if (!table_row.cells.isEmpty())
            model_.rows.push_back(table_row);
        return true;
    }

    // A subreport is laid out on its own into the object's rectangle: its
    // report header, its details and its report footer, cut at the rectangle's
    // foot. It reads its own rows, not the report's, so it is laid out once and
    // the same items are placed wherever it stands (a page heading on every page).
    bool subreport(const ReportObject& o, const QRectF& rect, int area)
    {
        if (!subreports_) {
            error_ = QStringLiteral("The subreport %1 cannot be read here.").arg(o.file);
            return false;
        }
        auto laid = subreport_pages_.find(o.file);
        if (laid == subreport_pages_.end()) {
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
            if (!layout.run({})) {
                error_ = QStringLiteral("The subreport %1 fails: %2").arg(o.file, inner_error);
                return false;
            }
            laid = subreport_pages_.emplace(o.file, std::move(inner_model.pages)).first;
        }
        Page& page = model_.pages.back();
        for (const Page& inner_page : laid->second)
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
    int last_printed_row_ = -1;
    std::map<QString, Formula> parsed_;
    std::map<QString, std::vector<Page>> subreport_pages_;  // by file
    LayoutContext context_;
    double top_ = 0, bottom_ = 0, y_ = 0, body_top_ = 0, page_header_height_ = 0;
    bool page_break_pending_ = false;
    // Page numbering: the first page of the present run, and of each page's run.
    bool restart_numbering_ = false;
    int run_start_ = 0;
    std::vector<int> run_starts_;
    std::vector<int> page_counts_;
    // Details in columns: the column to fill next, the top and height of the row of them.
    int column_ = 0;
    double column_top_ = 0, column_row_height_ = 0;
};

}  // namespace

bool lay_out_report(const ReportDefinition& report, const ReportFormulas& formulas, const ReportData& data,
                    const SubreportLoader& subreports, const LayoutSettings& settings, PageModel& model, QString& error)
{
    // Laid out once to count the pages, and again when a formula shows the count.
    Layout first(report, formulas, data, subreports, settings, model, error);
    if (!first.run({}))
        return false;
    if (!all_formula_texts(report).join(QLatin1Char(' ')).contains(QLatin1String("totalpagecount"), Qt::CaseInsensitive))
        return true;
    const std::vector<int> counts = first.page_counts();
    Layout second(report, formulas, data, subreports, settings, model, error);
    return second.run(counts);
}

}  // namespace reportengine
