#include "shell/course_order_query.h"

#include "engine/msg_box.h"
#include "shell/error_log.h"

#include <array>

namespace {

const std::array<QLatin1String, 4> query_names = {
    QLatin1String("Qry_Order_Courses_Title"),
    QLatin1String("Qry_Order_Courses_Day"),
    QLatin1String("Qry_Order_Courses_Location"),
    QLatin1String("Qry_Order_Courses_Location_Day"),
};

void report_invalid_call()
{
    Report_Error(report::Detected, QStringLiteral("Invalid call to routine DB_Convert_Course_Qry"),
                 engine::mb::Information, QStringLiteral("globdbhand"));
}

short number_of(const QString& name)
{
    const QString wanted = name.trimmed();
    for (std::size_t i = 0; i < query_names.size(); ++i) {
        if (wanted == query_names[i])
            return static_cast<short>(i + 1);
    }
    return 0;
}

}  // namespace

void DB_Convert_Course_Qry(QString& name, short& number)
{
    if (!name.isEmpty() && number != 0) {
        report_invalid_call();
        name.clear();
        number = 0;
    } else if (!name.isEmpty()) {
        number = number_of(name);
    } else if (number >= 1 && number <= static_cast<short>(query_names.size())) {
        name = query_names[static_cast<std::size_t>(number - 1)];
    } else {
        if (number != 0)
            report_invalid_call();
        number = 0;
        name.clear();
    }

    if (name.isEmpty() && number == 0) {
        number = 1;
        name = query_names[0];
    }
}
