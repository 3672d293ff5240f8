#pragma once

namespace tomewise {

// Loads the main window over a scratch store and opens every page and each of
// its dialogs and popups; returns 0 when no QML warning was printed, 1 otherwise.
int runSelfTest();

} // namespace tomewise
