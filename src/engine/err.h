#pragma once
// The platform's error state, as the program's routines see it.
//
// Routines never throw. An operation that fails sets `Err` (number and
// description) and returns false; the routine's own trap then calls
// Report_Error, which reads `Err`. Engine failures also fill
// `DBEngine_Errors`, the list of the last engine failure.

#include <QList>
#include <QString>

namespace engine {

struct ErrState {
    int Number = 0;
    QString Description;

    void Clear() { Number = 0; Description.clear(); }
    void Raise(int number, const QString& description)
    {
        Number = number;
        Description = description;
    }
};

struct EngineError {
    int Number = 0;
    QString Description;
};

// The run-time error state (VB's Err object).
ErrState& Err();

// DBEngine.Errors: the engine errors of the last engine failure.
QList<EngineError>& DBEngine_Errors();

// Sets both Err and DBEngine.Errors to one engine error.
void raise_engine_error(int number, const QString& description);

// Well-known run-time error numbers outside the engine's range.
namespace vberr {
inline constexpr int Overflow = 6;
inline constexpr int TypeMismatch = 13;
inline constexpr int InvalidUseOfNull = 94;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAlreadyOpen = 55;
inline constexpr int FileAlreadyExists = 58;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathNotFound = 76;
inline constexpr int InvalidProcedureCall = 5;
}  // namespace vberr

// Jet's error numbers that the program branches on.
namespace jet {
inline constexpr int DuplicateKey = 3022;
inline constexpr int ItemNotFound = 3265;
inline constexpr int TableExists = 3010;
inline constexpr int ObjectExists = 3012;
inline constexpr int FieldExists = 3380;
inline constexpr int IndexExists = 3375;
inline constexpr int TooFewParameters = 3061;
inline constexpr int RelatedRecordsExist = 3200;
inline constexpr int RelatedRecordRequired = 3201;
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int UpdateWithoutAddNewOrEdit = 3020;
inline constexpr int RecordIsDeleted = 3167;
inline constexpr int NotUpdatable = 3027;
inline constexpr int FieldTooSmall = 3163;
inline constexpr int NumericOverflow = 3349;
inline constexpr int DataTypeMismatch = 3464;
inline constexpr int NullInIndex = 3058;
inline constexpr int InputTableNotFound = 3078;
inline constexpr int FileNotFound = 3024;
inline constexpr int DatabaseExists = 3204;
inline constexpr int UnrecognizedFormat = 3343;
inline constexpr int Damaged = 3049;
inline constexpr int FileInUse = 3045;
inline constexpr int ReadOnly = 3051;
inline constexpr int SyntaxError = 3075;
inline constexpr int InvalidFieldName = 3070;
inline constexpr int NoTransaction = 3034;
inline constexpr int ObjectClosed = 3420;
inline constexpr int OperationInvalid = 3219;
inline constexpr int Reserved = 3000;
}  // namespace jet

}  // namespace engine
