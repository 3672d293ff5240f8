#include "clirun.h"

#include <QTest>

namespace tomewise::test {

CliRun runCli(const QString &dataDir, const QStringList &args, const QHash<QString, QString> &env,
              const QString &workingDir)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto it = env.cbegin(); it != env.cend(); ++it) {
        if (it.value().isEmpty())
            environment.remove(it.key());
        else
            environment.insert(it.key(), it.value());
    }
    QProcess p;
    p.setProcessEnvironment(environment);
    p.setWorkingDirectory(workingDir);
    p.start(QStringLiteral(TOMEWISE_CLI), QStringList{QStringLiteral("--data-dir"), dataDir} + args);
    if (!QTest::qWaitFor([&p] { return p.state() == QProcess::NotRunning; }, 60000)) {
        qWarning("tomewise-cli did not finish");
        p.kill();
        p.waitForFinished(5000);
    }
    return {p.exitCode(), p.exitStatus(), QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

} // namespace tomewise::test
