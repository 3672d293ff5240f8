import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A main-menu entry: rounded, black-bordered (red for the control button).
AbstractButton {
    id: button
    property string iconName
    property color borderColor: "black"
    property bool hiddenState: false

    implicitHeight: hiddenState ? 0 : 52
    opacity: hiddenState ? 0 : 1
    visible: implicitHeight > 0
    Behavior on implicitHeight { NumberAnimation { duration: 200 } }
    Behavior on opacity { NumberAnimation { duration: 200 } }

    background: Rectangle {
        radius: 10
        border.width: 2
        border.color: button.borderColor
        color: button.down ? Qt.darker(Theme.rowBackground, 1.08) : Theme.rowBackground
    }
    contentItem: RowLayout {
        spacing: 12
        Icon { name: button.iconName; color: Theme.primary; Layout.leftMargin: 14 }
        Label {
            text: button.text
            font.pixelSize: 17
            color: Theme.ink
            Layout.fillWidth: true
        }
        Icon { name: "chevron_right"; color: Theme.muted; Layout.rightMargin: 8 }
    }
}
