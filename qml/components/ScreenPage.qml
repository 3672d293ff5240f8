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

    signal unwound(string name)

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

    background: Rectangle { color: Theme.paper }
}
