import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// The "Reference List" hub: one button per list.
ScreenPage {
    id: page
    title: ctl.title

    ReferenceListViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
    }

    ColumnLayout {
        x: Theme.margin
        y: Theme.margin * 1.5
        width: parent.width - 2 * Theme.margin
        spacing: 14

        Label {
            Layout.fillWidth: true
            Layout.bottomMargin: 6
            text: "The names offered by the book form's pickers."
            color: Theme.muted
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        Repeater {
            model: ctl.Buttons
            MenuButton {
                required property var modelData
                required property int index
                objectName: modelData.outlet
                Layout.fillWidth: true
                text: modelData.title
                iconName: modelData.icon
                onClicked: ctl.openList(index)
            }
        }
    }
}
