import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Tomewise
import "components"

ApplicationWindow {
    id: window
    required property AppDelegate appDelegate

    width: 390
    height: 844
    visible: true
    title: "Tomewise"
    Material.theme: Material.Light
    Material.accent: Theme.accent
    Material.primary: Theme.primary

    FontLoader { source: "qrc:/resources/MaterialIcons-Regular.ttf" }

    header: NavBar {
        page: stack.currentItem
        canGoBack: stack.depth > 1
        visible: !!stack.currentItem && !stack.currentItem.navigationBarHidden
        onBackClicked: stack.currentItem.goBack()
        Keys.onPressed: event => window.backKey(event)
    }

    StackView {
        id: stack
        anchors.fill: parent
        focus: true
        Component.onCompleted: window.openPage("MainMenu")
        Keys.onPressed: event => window.backKey(event)
    }

    // The platform's store-review prompt, over whichever screen asked.
    ReviewCard { appDelegate: window.appDelegate }

    // Escape and Alt+Left do what the back button does, from the page or its bar;
    // an open popup keeps them for itself.
    function backKey(event) {
        const back = event.key === Qt.Key_Escape || event.key === Qt.Key_Back
            || (event.key === Qt.Key_Left && (event.modifiers & Qt.AltModifier))
        if (back && stack.depth > 1) {
            stack.currentItem.goBack()
            event.accepted = true
        }
    }

    FocusRing { target: window.activeFocusControl }

    // Opens the page of a navigation target over the current one.
    function openPage(target, properties) {
        const props = Object.assign({ appDelegate: window.appDelegate, pageTarget: target }, properties || {})
        return stack.push(Pages.url(target), props)
    }

    // Returns to the nearest page below that answers to the unwind name.
    function unwind(name) {
        const destination = stack.find(p => p.unwindTargets && p.unwindTargets.indexOf(name) >= 0)
        if (!destination)
            return false
        stack.pop(destination)
        destination.unwound(name)
        return true
    }

    function back() {
        if (stack.depth > 1)
            stack.pop()
    }

    // A short notice over whichever page is shown, so it survives the
    // navigation that follows a save: showNotice(text[, actionText, handler, owner]).
    function showNotice(text, actionText, handler, owner) {
        notice.show(text, actionText, handler, owner)
    }
    function dismissNotice(owner) {
        notice.dismiss(owner)
    }

    Notice { id: notice }

    readonly property alias pageStack: stack
}
