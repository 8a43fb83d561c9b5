#include "ChildRun.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

ChildRun ChildRun::run(const QString& program, const QStringList& arguments)
{
    ChildRun r;
    std::vector<QByteArray> args { program.toLocal8Bit() };
    for (const QString& a : arguments)
        args.push_back(a.toLocal8Bit());
    std::vector<char*> argv;
    for (QByteArray& a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);

    char errorPath[] = "/tmp/capture-bench-XXXXXX";
    const int errorFd = mkstemp(errorPath);
    if (errorFd < 0)
        return r;
    QElapsedTimer timer;
    timer.start();
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(errorFd, STDERR_FILENO);
        const int null = open("/dev/null", O_RDWR);
        dup2(null, STDIN_FILENO);
        dup2(null, STDOUT_FILENO);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage {};
    if (pid > 0 && wait4(pid, &status, 0, &usage) == pid) {
        r.wallSeconds = timer.elapsed() / 1000.0;
        r.cpuSeconds
            = usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
        r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        r.ok = r.exitCode == 0;
    }
    QFile errors(QString::fromLocal8Bit(errorPath));
    if (errors.open(QIODevice::ReadOnly))
        r.errorOutput = QString::fromLocal8Bit(errors.readAll());
    close(errorFd);
    unlink(errorPath);
    return r;
}

double processCpuSeconds(long pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (pid <= 0 || !stat.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = stat.readAll();
    // The command name may hold spaces: the fields we want follow its closing parenthesis.
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    if (fields.size() < 13)
        return -1;
    return (fields[11].toLongLong() + fields[12].toLongLong()) / double(sysconf(_SC_CLK_TCK));
}

long xServerPid(const QString& display)
{
    const QStringList pids = QDir(QStringLiteral("/proc")).entryList({ QStringLiteral("[0-9]*") }, QDir::Dirs);
    for (const QString& pid : pids) {
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (!cmdline.open(QIODevice::ReadOnly))
            continue;
        const QList<QByteArray> args = cmdline.readAll().split('\0');
        if (!args.isEmpty() && args.first().endsWith("Xvfb") && args.contains(display.toLocal8Bit()))
            return pid.toLong();
    }
    return 0;
}
