#pragma once
// The words report files use for paper, orientation, formats, areas, objects
// and alignment, shared by the reader and the writer of the format.

#include "reportengine/report_definition.h"

#include <QHash>
#include <QString>

namespace reportengine::file_words {

const QHash<QString, int>& paper_words();
const QHash<QString, int>& orientation_words();
const QHash<QString, FieldFormat::Type>& format_words();
const QHash<QString, AreaKind>& area_words();
const QHash<QString, ObjectKind>& object_words();
QString align_word(Qt::Alignment align);

template <typename T>
QString word_of(const QHash<QString, T>& words, T value)
{
    for (auto it = words.begin(); it != words.end(); ++it)
        if (it.value() == value)
            return it.key();
    return QString();
}

}  // namespace reportengine::file_words
