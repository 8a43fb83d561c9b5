#pragma once

#include <QString>
#include <QStringList>

// Runs a program to its end and reports what it cost: its own CPU time (wait4), wall time and
// what it wrote to standard error.
struct ChildRun {
    bool ok = false;
    int exitCode = -1;
    double cpuSeconds = 0; // user + system, of the child alone
    double wallSeconds = 0;
    QString errorOutput;

    static ChildRun run(const QString& program, const QStringList& arguments);
};

// CPU seconds a process has used so far (user + system, from /proc); -1 if unknown.
double processCpuSeconds(long pid);
// The X server serving `display` (":N"), found among the running processes; 0 if not found.
long xServerPid(const QString& display);
