#pragma once
#include <QString>

struct SystemRecord;

// Brings an old database up to the current version, step by step.
bool DB_Upgrade_Database(const QString& name, SystemRecord& system_record);
