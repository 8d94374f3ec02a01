#pragma once
// The rules of the money and tax values on the Report Text screen, kept apart
// from the screen. The rates and the cost per pupil feed the invoicing
// queries and scripts, so each must read as an amount of money; a blank one
// means nothing is charged and is stored as 0.

#include <QString>
#include <array>

// What the secretary typed; the checks write "0" into each blank value.
struct StandardTextEntry {
    QString exam_rate;
    QString course_rate;
    QString show_cost;
    std::array<QString, 6> vat_percent;
};

// The field a refusal sends the secretary back to.
enum class StandardTextField { None, Exam_Rate, Course_Rate, Show_Cost, VAT_Percent };

struct StandardTextRefusal {
    StandardTextField field = StandardTextField::None;
    int index = 0;    // which VAT percentage, 0 to 5
    QString message;  // empty when all is well
};

// The exam rate, the course rate, the cost per pupil, then the six VAT
// percentages, in that order; the first value that breaks its rule is the answer.
StandardTextRefusal Check_Standard_Text(StandardTextEntry& entry);
