#pragma once
// The current database for routines that run statements on it. When none is
// open the caller gets null and the engine error of an object no longer set,
// so that its trap reports the failure like any other.

namespace engine {
class Database;
}

engine::Database* current_database_or_error();
