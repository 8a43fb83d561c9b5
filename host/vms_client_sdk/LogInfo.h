#pragma once

#include <QString>

namespace vms_sdk {

// Appends "yyyy-MM-dd hh:mm:ss.zzz message[ extra]" as one line to the program's log file and
// flushes it. Safe from any thread; line breaks inside the texts are turned into spaces.
void log_info(const QString& message, const QString& extra);

// Log file to use from now on; empty means the default, "kvms_client.log" in the working directory.
void set_log_file(const QString& path);
QString log_file();

} // namespace vms_sdk
