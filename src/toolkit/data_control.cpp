#include "toolkit/data_control.h"

#include "engine/database.h"
#include "engine/currency.h"
#include "engine/err.h"
#include "engine/locale_source.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/error_log.h"

void BoundField::fill(const QVariant& value)
{
    filling_ = true;
    show_value(value);
    filling_ = false;
    data_changed_ = false;
}

QString BoundField::text_of(const QVariant& value) const
{
    if (money_)
        return Money_Text(value);
    return picture_.isEmpty() ? vb::CStr(value) : vb::Format(value, picture_);
}

QString Money_Text(const QVariant& value)
{
    engine::Currency money;
    if (value.isNull() || !value.isValid() || !vb::CCur(value, money)) {
        engine::Err().Clear();
        return vb::CStr(value);
    }
    // Four places, then the noughts that say nothing, down to two places.
    QString text = QString::number(money.to_double(), 'f', 4);
    while (text.endsWith(QLatin1Char('0')) && text.indexOf(QLatin1Char('.')) < text.size() - 3)
        text.chop(1);
    return text.replace(QLatin1Char('.'), engine::locale_source().locale().decimalPoint());
}

DataControl::DataControl(QString name, QString error_words, QString module)
    : name_(std::move(name)), error_words_(std::move(error_words)), module_(std::move(module))
{
}

DataControl::~DataControl()
{
    Close();
}

void DataControl::bind(BoundField* field)
{
    fields_.push_back(field);
}

bool DataControl::Refresh(engine::Database* database, const QString& record_source)
{
    record_source_ = record_source;
    Close();
    if (!database) {
        engine::Err().Raise(engine::jet::ObjectClosed, QStringLiteral("There is no database open."));
        report_error(QStringLiteral("Refresh"));
        return false;
    }
    recordset_ = database->OpenRecordset(record_source);
    if (!recordset_) {
        report_error(QStringLiteral("Refresh"));
        return false;
    }
    learn_column_limits();
    UpdateControls();
    if (on_reposition_)
        on_reposition_();
    return true;
}

bool DataControl::is_empty() const
{
    return !recordset_ || (recordset_->at_bof() && recordset_->at_eof());
}

void DataControl::UpdateControls()
{
    const bool has_record = recordset_ && (recordset_->EditMode() == engine::editmode::Add
                                           || (!recordset_->at_bof() && !recordset_->at_eof()));
    for (BoundField* field : fields_) {
        QVariant value;
        if (has_record && !recordset_->get(field->DataField(), value))
            value = QVariant();
        field->fill(value);
    }
    engine::Err().Clear();
}

void DataControl::fill_new_record(const std::function<bool(const BoundField&)>& keeps_its_value)
{
    if (!recordset_ || recordset_->EditMode() != engine::editmode::Add)
        return;
    for (BoundField* field : fields_) {
        if (keeps_its_value && keeps_its_value(*field))
            continue;
        QVariant value;
        if (!recordset_->get(field->DataField(), value))
            value = QVariant();
        field->fill(value);
    }
    engine::Err().Clear();
}

void DataControl::learn_column_limits()
{
    for (BoundField* field : fields_) {
        const int index = recordset_->field_index(field->DataField());
        if (index < 0)
            continue;  // a name that isn't a field fails, and is reported, when it is read
        const engine::FieldInfo& column = recordset_->field(index);
        field->set_max_length(column.type == engine::FieldType::Text ? column.text_length : 0);
        if (column.type == engine::FieldType::Currency)
            field->set_money(true);
    }
}

bool DataControl::moved(bool ok)
{
    if (!ok)
        return false;
    UpdateControls();
    if (on_reposition_)
        on_reposition_();
    return true;
}

bool DataControl::MoveFirst() { return recordset_ && moved(recordset_->MoveFirst()); }
bool DataControl::MoveLast() { return recordset_ && moved(recordset_->MoveLast()); }
bool DataControl::MoveNext() { return recordset_ && moved(recordset_->MoveNext()); }
bool DataControl::MovePrevious() { return recordset_ && moved(recordset_->MovePrevious()); }

bool DataControl::FindFirst(const QString& criteria)
{
    if (!recordset_ || !recordset_->FindFirst(criteria))
        return false;
    // Without a match the record stays where it was: nothing moved.
    return recordset_->NoMatch() || moved(true);
}

bool DataControl::NoMatch() const
{
    return recordset_ && recordset_->NoMatch();
}

bool DataControl::Requery() { return recordset_ && moved(recordset_->Requery()); }

int DataControl::EditMode() const
{
    return recordset_ ? recordset_->EditMode() : engine::editmode::None;
}

bool DataControl::AddNew() { return recordset_ && recordset_->AddNew(); }
bool DataControl::Edit() { return recordset_ && recordset_->Edit(); }
bool DataControl::CancelUpdate() { return recordset_ && recordset_->CancelUpdate(); }

bool DataControl::Update()
{
    if (!recordset_)
        return false;
    const bool adding = recordset_->EditMode() == engine::editmode::Add;
    for (BoundField* field : fields_) {
        if (field->read_only() || (!adding && !field->DataChanged()))
            continue;
        if (!recordset_->set(field->DataField(), field->value()))
            return false;
    }
    return recordset_->Update();
}

bool DataControl::Delete() { return recordset_ && recordset_->Delete(); }

void DataControl::Close()
{
    if (recordset_)
        recordset_->Close();
    recordset_.reset();
}

void DataControl::report_error(const QString& routine) const
{
    Report_Error(report::BoundControl, error_words_ + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                 engine::mb::OkOnly, module_, name_ + QLatin1Char('_') + routine);
}
