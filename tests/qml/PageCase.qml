import QtQuick
import QtTest

// A page test: the whole app in its own window over the file's fresh library,
// and the steps the page tests share.
TestCase {
    when: windowShown
    property var window

    function initTestCase() { openWindow() }
    function cleanupTestCase() { window.destroy() }
    function openWindow() {
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.status, Component.Ready, component.errorString())
        window = component.createObject(null, { appDelegate: testApp })
        verify(window)
        window.requestActivate()
        waitForRendering(window.contentItem)
    }

    function page() { return window.pageStack.currentItem }
    // Waits for the page's push or pop transition to end.
    function arrive(title) {
        tryCompare(page(), "title", title)
        wait(400)
    }
    function typeText(text) {
        for (const c of text)
            keyClick(c)
    }
    function shot(name) {
        wait(200)
        shots.save(window, name)
    }
    // Answers the open alert; returns its title and message.
    function answer(button) {
        const alert = findChild(page(), "alert")
        tryCompare(alert, "opened", true)
        const texts = [alert.title, alert.message]
        mouseClick(findChild(alert.footer, "alertButton_" + (button || "OK")))
        tryCompare(alert, "visible", false)
        return texts
    }
    // Waits for the notice after a save or delete; with an action, taps it.
    function notice(text, tapAction) {
        const toast = findChild(window.contentItem, "notice")
        tryCompare(toast, "shown", true)
        if (text !== undefined)
            compare(toast.text, text)
        if (tapAction) {
            mouseClick(findChild(toast, "noticeAction"))
            tryCompare(toast, "visible", false)
        }
        return toast
    }
    function openMenuEntry(button) {
        mouseClick(findChild(page(), "ControlButton"))
        const entry = findChild(page(), button)
        tryCompare(entry, "visible", true)
        wait(250)
        mouseClick(entry)
    }
}
