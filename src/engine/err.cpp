#include "engine/err.h"

namespace engine {

ErrState& Err()
{
    static ErrState state;
    return state;
}

QList<EngineError>& DBEngine_Errors()
{
    static QList<EngineError> errors;
    return errors;
}

void raise_engine_error(int number, const QString& description)
{
    Err().Raise(number, description);
    DBEngine_Errors() = {EngineError{number, description}};
}

}  // namespace engine
