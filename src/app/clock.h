#pragma once

#include <QDateTime>

namespace tomewise {

// Where "now" comes from; tests hold it still and step it.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const { return QDateTime::currentDateTimeUtc(); }
};

class FixedClock : public Clock
{
public:
    explicit FixedClock(QDateTime now) : m_now(std::move(now)) {}
    QDateTime now() const override { return m_now; }
    void set(const QDateTime &now) { m_now = now; }
    void advance(qint64 seconds) { m_now = m_now.addSecs(seconds); }

private:
    QDateTime m_now;
};

} // namespace tomewise
