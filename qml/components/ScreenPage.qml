import QtQuick
import QtQuick.Controls
import Tomewise

// What every screen's page shares: the delegate, its navigation target, the
// unwind names it answers to, and the actions shown in the navigation bar.
Page {
    id: page
    required property AppDelegate appDelegate
    property string pageTarget
    property var unwindTargets: []
    property bool navigationBarHidden: false
    property Component barActions: null
    // In a wide window the content stays centred at a readable width; 0 lets it fill.
    property int maxContentWidth: Theme.readableWidth

    signal unwound(string name)

    // The keyboard lands on the page that shows, so that its keys (Escape) work at once.
    StackView.onActivated: if (!activeFocus) forceActiveFocus()

    function openPage(target, properties) {
        return ApplicationWindow.window.openPage(target, properties)
    }
    function unwind(name) {
        if (!ApplicationWindow.window.unwind(name))
            ApplicationWindow.window.back()
    }
    function goBack() {
        ApplicationWindow.window.back()
    }
    function showNotice(text) {
        ApplicationWindow.window.showNotice(text)
    }
    // "Deleted “name”" with Undo; the Undo goes with the page, whose controller runs it.
    function offerUndo(name, undo) {
        ApplicationWindow.window.showNotice("Deleted \u201c" + name + "\u201d", "Undo", undo, page)
    }
    StackView.onDeactivating: ApplicationWindow.window.dismissNotice(page)

    leftPadding: maxContentWidth > 0 ? Math.max(0, (width - maxContentWidth) / 2) : 0
    rightPadding: leftPadding
    background: Rectangle { color: Theme.paper }
}
