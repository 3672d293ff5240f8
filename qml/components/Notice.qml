import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A short notice at the foot of the screen, with an optional action (Undo),
// that goes away by itself after a few seconds.
Popup {
    id: notice
    property string text
    property string actionText
    property var action: null
    property int timeout: 5000

    function show(message, label, handler) {
        notice.text = message
        notice.actionText = label || ""
        notice.action = handler || null
        timer.restart()
        open()
    }

    objectName: "notice"
    parent: Overlay.overlay
    x: (parent ? parent.width - width : 0) / 2
    y: parent ? parent.height - height - 24 : 0
    width: Math.min(parent ? parent.width - 32 : 360, 480)
    modal: false
    focus: false
    closePolicy: Popup.CloseOnEscape
    padding: 0
    background: Rectangle { radius: 8; color: Theme.primary }

    Timer { id: timer; interval: notice.timeout; onTriggered: notice.close() }

    contentItem: RowLayout {
        spacing: 0
        Label {
            objectName: "noticeText"
            Layout.fillWidth: true
            Layout.leftMargin: 16
            text: notice.text
            color: "white"
            font.pixelSize: 15
            elide: Text.ElideMiddle
            Layout.minimumHeight: 48
            verticalAlignment: Text.AlignVCenter
        }
        Button {
            objectName: "noticeAction"
            visible: notice.actionText.length > 0
            text: notice.actionText
            flat: true
            Layout.minimumHeight: 48
            font.bold: true
            contentItem: Label {
                text: notice.actionText
                color: Theme.onPrimaryAccent
                font.bold: true
                font.pixelSize: 15
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
            onClicked: {
                const handler = notice.action
                notice.action = null
                notice.close()
                if (handler)
                    handler()
            }
        }
    }
}
