import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// A short notice near the bottom of the window ("Saved “Dune”"), optionally
// with one action ("Undo"). It takes no focus and blocks nothing around it;
// a new notice replaces the one on screen.
//
//   toast.show(text)                              shown for `duration` ms
//   toast.show(text, actionText, handler)         shown for `actionDuration` ms;
//                                                 handler() runs once if tapped
Rectangle {
    id: toast
    property int duration: 2500
    property int actionDuration: 5000
    property string text
    property string actionText
    property var actionHandler: null
    readonly property bool shown: state === "shown"

    signal actionTriggered()

    function show(message, action, handler) {
        text = message
        actionText = action || ""
        actionHandler = handler || null
        timer.interval = actionText.length > 0 ? actionDuration : duration
        state = "shown"
        timer.restart()
    }
    function hide() {
        timer.stop()
        state = ""
        actionHandler = null
    }

    objectName: "toast"
    z: 100
    anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
    anchors.bottom: parent ? parent.bottom : undefined
    anchors.bottomMargin: 24
    width: Math.min(parent ? parent.width - 32 : 358, row.implicitWidth + 32)
    height: Math.max(48, row.implicitHeight + 16)
    radius: 8
    color: "#323232"
    opacity: 0
    visible: opacity > 0
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    states: State {
        name: "shown"
        PropertyChanges { target: toast; opacity: 1 }
    }
    transitions: Transition {
        NumberAnimation { property: "opacity"; duration: 150 }
    }

    Timer {
        id: timer
        onTriggered: toast.hide()
    }

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: toast.actionText.length > 0 ? 4 : 16
        spacing: 8
        Label {
            objectName: "toastText"
            Layout.fillWidth: true
            text: toast.text
            color: "white"
            font.pixelSize: 15
            elide: Text.ElideRight
        }
        Button {
            objectName: "toastAction"
            visible: toast.actionText.length > 0
            text: toast.actionText
            flat: true
            focusPolicy: Qt.NoFocus
            Material.foreground: "#ffb4a9"
            onClicked: {
                const handler = toast.actionHandler
                toast.hide()
                toast.actionTriggered()
                if (handler)
                    handler()
            }
        }
    }
}
