#pragma once

namespace tomewise {

// Registers every controller and value type under the QML module "Tomewise".
// The app, the self-test and the page tests all call it.
void registerQmlTypes();

} // namespace tomewise
