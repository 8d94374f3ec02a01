#include "reportengine/report_definition.h"

namespace reportengine {

namespace {

// Where an area stands in the fixed order, for the given number of groups.
int order_of(const ReportArea& a, int group_count)
{
    switch (a.kind) {
    case AreaKind::ReportHeader: return 0;
    case AreaKind::PageHeader: return 1;
    case AreaKind::GroupHeader: return 1 + a.group;
    case AreaKind::Details: return 2 + group_count;
    case AreaKind::GroupFooter: return 3 + group_count + (group_count - a.group);
    case AreaKind::PageFooter: return 3 + 2 * group_count;
    case AreaKind::ReportFooter: return 4 + 2 * group_count;
    }
    return 0;
}

}  // namespace

void ReportDefinition::complete_areas()
{
    const int groups_count = static_cast<int>(groups.size());
    std::vector<ReportArea> full(5 + 2 * groups_count);
    full[0].kind = AreaKind::ReportHeader;
    full[1].kind = AreaKind::PageHeader;
    for (int g = 1; g <= groups_count; ++g) {
        full[1 + g] = ReportArea{AreaKind::GroupHeader, g, false, {}, 1, 0};
        full[3 + groups_count + (groups_count - g)] = ReportArea{AreaKind::GroupFooter, g, false, {}, 1, 0};
    }
    full[2 + groups_count].kind = AreaKind::Details;
    full[3 + 2 * groups_count].kind = AreaKind::PageFooter;
    full[4 + 2 * groups_count].kind = AreaKind::ReportFooter;
    for (ReportArea& given : areas) {
        const int at = order_of(given, groups_count);
        if (at >= 0 && at < static_cast<int>(full.size()))
            full[at] = std::move(given);
    }
    areas = std::move(full);
}

ReportArea* ReportDefinition::area(int number)
{
    if (number < 1 || number > area_count())
        return nullptr;
    return &areas[number - 1];
}

ReportFormula* ReportDefinition::formula(const QString& name)
{
    for (ReportFormula& f : formulas)
        if (f.name.compare(name, Qt::CaseInsensitive) == 0)
            return &f;
    return nullptr;
}

QString area_kind_name(AreaKind kind)
{
    switch (kind) {
    case AreaKind::ReportHeader: return QStringLiteral("reportHeader");
    case AreaKind::PageHeader: return QStringLiteral("pageHeader");
    case AreaKind::GroupHeader: return QStringLiteral("groupHeader");
    case AreaKind::Details: return QStringLiteral("details");
    case AreaKind::GroupFooter: return QStringLiteral("groupFooter");
    case AreaKind::PageFooter: return QStringLiteral("pageFooter");
    case AreaKind::ReportFooter: return QStringLiteral("reportFooter");
    }
    return QString();
}

}  // namespace reportengine
