import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// "Rate & Share": one section of five rows, each doing one thing at a tap.
ScreenPage {
    id: page
    title: ctl.title
    property alias controller: ctl

    RateShareTableViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    ColumnLayout {
        x: Theme.margin
        y: Theme.margin * 1.5
        width: parent.width - 2 * Theme.margin
        spacing: 12

        Label {
            Layout.fillWidth: true
            Layout.bottomMargin: 6
            text: "Enjoying Tomewise? Tell the store, tell a friend, or tell us."
            color: Theme.muted
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        Repeater {
            model: ctl.rows
            ItemDelegate {
                id: row
                required property var modelData
                required property int index
                objectName: "RateShareRow" + index
                Layout.fillWidth: true
                implicitHeight: 64
                background: RowFrame {
                    color: row.down ? Qt.darker(Theme.rowBackground, 1.06) : Theme.rowBackground
                }
                contentItem: RowLayout {
                    spacing: 12
                    Icon { name: row.modelData.icon; color: Theme.primary; Layout.leftMargin: 6 }
                    ColumnLayout {
                        spacing: 2
                        Layout.fillWidth: true
                        Label {
                            text: row.modelData.label
                            font.pixelSize: 17
                            color: Theme.ink
                        }
                        Label {
                            Layout.fillWidth: true
                            text: row.modelData.detail
                            font.pixelSize: 13
                            color: Theme.muted
                            elide: Text.ElideRight
                        }
                    }
                    Icon { name: "chevron_right"; color: Theme.muted }
                }
                Accessible.name: modelData.label
                onClicked: ctl.didSelectRow(index)
            }
        }
    }

    AlertHost { controller: ctl }
    ShareSheet { platform: page.appDelegate.platform }
}
