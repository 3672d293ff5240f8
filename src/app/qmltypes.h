#pragma once

class QQmlEngine;

namespace tomewise {

class AppDelegate;

// Registers every controller and value type under the QML module "Tomewise".
// The app, the self-test and the page tests all call it.
void registerQmlTypes();
// The image addresses pages use ("image://cover/<pk>"), served from the delegate's store.
void installImageProviders(QQmlEngine &engine, AppDelegate &delegate);

} // namespace tomewise
