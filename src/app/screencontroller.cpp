#include "screencontroller.h"

#include <QTimer>

namespace tomewise {

ScreenController::ScreenController(AppDelegate *delegate, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
{
}

void ScreenController::setAppDelegate(AppDelegate *delegate)
{
    if (m_delegate == delegate)
        return;
    m_delegate = delegate;
    Q_EMIT appDelegateChanged();
}

AppDelegate &ScreenController::app() const
{
    if (!m_delegate)
        qFatal("%s used before it was given the application delegate", metaObject()->className());
    return *m_delegate;
}

void ScreenController::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}

QStringList ScreenController::alertButtons() const
{
    QStringList titles;
    for (const auto &a : m_alertActions)
        titles << a.title;
    return titles;
}

void ScreenController::showAlert(const QString &title, const QString &message, QList<AlertAction> actions)
{
    if (actions.isEmpty())
        actions.append({QStringLiteral("OK"), AlertAction::Style::Default, {}});
    m_alertTitle = title;
    m_alertMessage = message;
    m_alertActions = std::move(actions);
    int cancelIndex = -1;
    for (int i = 0; i < m_alertActions.size(); ++i) {
        if (m_alertActions[i].style == AlertAction::Style::Cancel)
            cancelIndex = i;
    }
    Q_EMIT alert(title, message, alertButtons(), cancelIndex);
}

void ScreenController::answerAlert(int index)
{
    if (index < 0 || index >= m_alertActions.size())
        return;
    const auto handler = m_alertActions[index].handler;
    m_alertTitle.clear();
    m_alertMessage.clear();
    m_alertActions.clear();
    if (handler)
        handler();
}

void ScreenController::after(int milliseconds, std::function<void()> work)
{
    // The controller is the timer's context: a screen that has gone does nothing.
    QTimer::singleShot(app().scaledDelay(milliseconds), this, std::move(work));
}

bool ScreenController::canSendTextOrAlert()
{
    if (app().platform().canSendText())
        return true;
    showAlert(QStringLiteral("Can't Send Text Message"), QStringLiteral("Your device is not able to send text messages."));
    return false;
}

} // namespace tomewise
