#pragma once

#include <QStringList>

namespace tomewise::test {

// Collects the diagnostic log (the tomewise.* categories) while it lives.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    // The messages, optionally of one category only ("tomewise.app").
    QStringList lines(const char *category = nullptr) const;
    void clear();
};

} // namespace tomewise::test
