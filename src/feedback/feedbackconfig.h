#pragma once

#include <QString>

namespace tomewise {

class Settings;

// The addresses the rate-and-share screen uses: the build's own (the
// resource :/feedback/addresses.json), each overridden by a settings key of
// the same name under "Feedback." when one is set.
struct FeedbackConfig
{
    QString productURL;  // the store's product page
    QString website;     // the shared web page text, leading blank and all
    QString webPage;     // the page the screen opens
    QString supportMail; // one recipient

    static FeedbackConfig load(const Settings &settings);
};

} // namespace tomewise
