#include "reportoutput/office_exports.h"

#include "reportengine/text_exports.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <xlsxwriter.h>
#include <zip.h>

#include <cmath>

namespace reportoutput {

using reportengine::PageModel;

namespace {

// A cell's text as a number when it reads as one ("12.50", "-3"), so that
// the spreadsheet can add it up.
bool as_number(const QString& text, double& number)
{
    static const QRegularExpression plain(QStringLiteral(R"(^-?\d+(\.\d+)?$)"));
    if (!plain.match(text).hasMatch())
        return false;
    number = text.toDouble();
    return true;
}

QString xml_escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QByteArray document_xml(const PageModel& model)
{
    QString body;
    for (size_t p = 0; p < model.pages.size(); ++p) {
        if (p > 0)
            body += QStringLiteral("<w:p><w:r><w:br w:type=\"page\"/></w:r></w:p>");
        for (const auto& line : reportengine::lines_of(model.pages[p])) {
            body += QStringLiteral("<w:p>");
            for (size_t i = 0; i < line.size(); ++i) {
                if (i > 0)
                    body += QStringLiteral("<w:r><w:tab/></w:r>");
                body += QStringLiteral("<w:r><w:t xml:space=\"preserve\">%1</w:t></w:r>").arg(xml_escaped(line[i]->text));
            }
            body += QStringLiteral("</w:p>");
        }
    }
    const int width_twips = static_cast<int>(std::lround(model.paper.width() / 25.4 * 1440));
    const int height_twips = static_cast<int>(std::lround(model.paper.height() / 25.4 * 1440));
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                          "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:body>%1"
                          "<w:sectPr><w:pgSz w:w=\"%2\" w:h=\"%3\"/></w:sectPr></w:body></w:document>")
        .arg(body)
        .arg(width_twips)
        .arg(height_twips)
        .toUtf8();
}

const char* content_types =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
    "<Override PartName=\"/word/document.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/>"
    "<Override PartName=\"/docProps/core.xml\" ContentType=\"application/vnd.openxmlformats-package.core-properties+xml\"/>"
    "</Types>";

const char* package_relations =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
    "Target=\"word/document.xml\"/>"
    "<Relationship Id=\"rId2\" Type=\"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties\" "
    "Target=\"docProps/core.xml\"/>"
    "</Relationships>";

QByteArray core_properties(const QString& title)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                          "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
                          "xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:title>%1</dc:title><dc:creator>Quillary</dc:creator>"
                          "</cp:coreProperties>")
        .arg(xml_escaped(title))
        .toUtf8();
}

// Adds one part to the package; the zip keeps its own copy of the bytes.
bool add_part(zip_t* archive, const char* name, const QByteArray& bytes)
{
    void* copy = malloc(static_cast<size_t>(bytes.size()));
    if (!copy)
        return false;
    memcpy(copy, bytes.constData(), static_cast<size_t>(bytes.size()));
    zip_source_t* source = zip_source_buffer(archive, copy, static_cast<zip_uint64_t>(bytes.size()), 1);
    if (!source) {
        free(copy);
        return false;
    }
    if (zip_file_add(archive, name, source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8) < 0) {
        zip_source_free(source);
        return false;
    }
    return true;
}

}  // namespace

bool write_xlsx(const PageModel& model, const QString& path, const QString& title, QString& error)
{
    QFile::remove(path);
    lxw_workbook* workbook = workbook_new(QFile::encodeName(path).constData());
    if (!workbook) {
        error = QStringLiteral("The file %1 could not be made.").arg(path);
        return false;
    }
    const QByteArray sheet_name = title.left(31).replace(QRegularExpression(QStringLiteral("[\\[\\]:*?/\\\\]")), QStringLiteral(" ")).toUtf8();
    lxw_worksheet* sheet = workbook_add_worksheet(workbook, sheet_name.isEmpty() ? nullptr : sheet_name.constData());
    lxw_row_t r = 0;
    for (const reportengine::TableRow& row : model.rows) {
        lxw_col_t c = 0;
        for (const QString& cell : row.cells) {
            double number = 0;
            if (as_number(cell, number))
                worksheet_write_number(sheet, r, c, number, nullptr);
            else
                worksheet_write_string(sheet, r, c, cell.toUtf8().constData(), nullptr);
            ++c;
        }
        ++r;
    }
    const lxw_error result = workbook_close(workbook);
    if (result != LXW_NO_ERROR) {
        error = QStringLiteral("The file %1 could not be written: %2").arg(path, QString::fromUtf8(lxw_strerror(result)));
        return false;
    }
    return true;
}

bool write_docx(const PageModel& model, const QString& path, const QString& title, QString& error)
{
    int zip_error = 0;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, &zip_error);
    if (!archive) {
        error = QStringLiteral("The file %1 could not be made.").arg(path);
        return false;
    }
    const bool added = add_part(archive, "[Content_Types].xml", content_types) && add_part(archive, "_rels/.rels", package_relations)
                       && add_part(archive, "docProps/core.xml", core_properties(title))
                       && add_part(archive, "word/document.xml", document_xml(model));
    if (!added) {
        error = QStringLiteral("The file %1 could not be written: %2").arg(path, QString::fromUtf8(zip_strerror(archive)));
        zip_discard(archive);
        return false;
    }
    if (zip_close(archive) < 0) {
        error = QStringLiteral("The file %1 could not be written: %2").arg(path, QString::fromUtf8(zip_strerror(archive)));
        zip_discard(archive);
        return false;
    }
    return true;
}

}  // namespace reportoutput
