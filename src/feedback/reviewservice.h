#pragma once

#include "feedback/reviewrequester.h"

#include <QDateTime>

#include <functional>
#include <optional>

class QWindow;

namespace tomewise {

class AppDelegate;
class Clock;

// Asks the platform for its store-review prompt at most once in 7 calendar
// days; whether anything shows is the platform's own decision.
class ReviewService : public ReviewRequester
{
public:
    static constexpr int kDaysBetweenRequests = 7;

    explicit ReviewService(AppDelegate &app);

    // "now" comes from the delegate's clock unless another is given.
    void setClock(const Clock *clock) { m_clock = clock; }
    // The window the prompt belongs to; by default the application's first.
    void setWindowLookup(std::function<QWindow *()> lookup) { m_windowLookup = std::move(lookup); }

    // Absent until the first request; a stored value that is not a date reads as absent.
    std::optional<QDateTime> lastRequest() const;
    void setLastRequest(const std::optional<QDateTime> &when);
    bool canRequest() const;

    // True when the 7 days had passed, whether or not a window took the prompt.
    bool request();
    void requestReview() override { request(); }

private:
    QDateTime now() const;

    AppDelegate &m_app;
    const Clock *m_clock = nullptr;
    std::function<QWindow *()> m_windowLookup;
};

} // namespace tomewise
