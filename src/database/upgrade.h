#pragma once
// Bringing a database file of an old release up to the current version, in
// place, one step per version. Each step is one transaction and leaves a
// consistent file of the next version, so that a failure leaves the file at
// the last version that finished. The steps work on the open database
// (Current_Db()); the system record tells where to begin, and its version
// follows each step that ends.

#include <QString>

struct SystemRecord;

// All steps from the record's version to the current one, then the stored
// queries anew, since they name columns that only now exist.
bool DB_Upgrade_Database(const QString& name, SystemRecord& system_record);

bool DB_Upgrade_1_to_2(SystemRecord& system_record);
bool DB_Upgrade_2_to_3(SystemRecord& system_record);
bool DB_Upgrade_3_to_4(SystemRecord& system_record);
bool DB_Upgrade_4_to_5(SystemRecord& system_record);
bool DB_Upgrade_5_to_6(SystemRecord& system_record);
bool DB_Upgrade_6_to_7(SystemRecord& system_record);
bool DB_Upgrade_7_to_8(SystemRecord& system_record);
bool DB_Upgrade_8_to_9(SystemRecord& system_record);
bool DB_Upgrade_9_to_10(SystemRecord& system_record);
// Version 11 was never a format of its own: 10 and 11 both take this step.
bool DB_Upgrade_10_to_12(SystemRecord& system_record);
bool DB_Upgrade_12_to_13(SystemRecord& system_record);
