#pragma once

#include "app/appdelegate.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>

namespace tomewise {

// What every screen's controller shares: the delegate it works through, the
// alert it raises (answered by index), navigation, and fixed delays that do
// nothing once the screen has gone.
class ScreenController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tomewise::AppDelegate *appDelegate READ appDelegate WRITE setAppDelegate NOTIFY appDelegateChanged)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)

public:
    struct AlertAction
    {
        enum class Style { Default, Cancel, Destructive };
        QString title;
        Style style = Style::Default;
        std::function<void()> handler;
    };

    explicit ScreenController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    AppDelegate *appDelegate() const { return m_delegate; }
    void setAppDelegate(AppDelegate *delegate);
    QString title() const { return m_title; }

    // Runs the handler of the button at `index` of the alert last shown.
    Q_INVOKABLE void answerAlert(int index);

    // The alert on screen now (tests and the command line read it).
    QString alertTitle() const { return m_alertTitle; }
    QString alertMessage() const { return m_alertMessage; }
    QStringList alertButtons() const;

Q_SIGNALS:
    void appDelegateChanged();
    void titleChanged();
    void alert(const QString &title, const QString &message, const QStringList &buttons, int cancelIndex);
    void navigate(const QString &target);
    void unwind(const QString &name);

protected:
    AppDelegate &app() const;
    BookStore &context() const { return app().persistentContainer(); }
    void setTitle(const QString &title);
    void showAlert(const QString &title, const QString &message, QList<AlertAction> actions = {});
    void after(int milliseconds, std::function<void()> work);
    // False, with the "Can't Send Text Message" alert, where the device sends no texts.
    bool canSendTextOrAlert();

private:
    QPointer<AppDelegate> m_delegate;
    QString m_title;
    QString m_alertTitle;
    QString m_alertMessage;
    QList<AlertAction> m_alertActions;
};

} // namespace tomewise
