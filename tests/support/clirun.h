#pragma once

#include <QHash>
#include <QProcess>
#include <QStringList>

namespace tomewise::test {

// What one run of tomewise-cli left behind.
struct CliRun
{
    int status = -1;
    QProcess::ExitStatus exit = QProcess::NormalExit;
    QString out;
    QString err;
};

// Runs tomewise-cli on the library in dataDir. The event loop turns while it
// runs, since a test server in this process may be what it talks to. `env`
// is added to this process's environment; an empty value unsets the variable.
CliRun runCli(const QString &dataDir, const QStringList &args, const QHash<QString, QString> &env = {},
              const QString &workingDir = QString());

} // namespace tomewise::test
