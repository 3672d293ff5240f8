import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title
    unwindTargets: ["unwindToMenu"]
    navigationBarHidden: ctl.navigationBarHidden

    MainMenuViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
    }
    Component.onCompleted: ctl.viewDidLoadInSlices()
    StackView.onActivating: ctl.viewWillAppear()

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 32
        clip: true

        ColumnLayout {
            id: column
            x: Theme.margin
            y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: 10

            Rectangle {
                Layout.fillWidth: true
                Layout.preferredHeight: 168
                radius: 14
                color: Theme.primary
                ColumnLayout {
                    anchors.centerIn: parent
                    spacing: 4
                    Icon { name: "auto_stories"; size: 56; color: "#f2e6d0"; Layout.alignment: Qt.AlignHCenter }
                    Label {
                        text: "Tomewise"
                        color: "white"
                        font.pixelSize: 30
                        font.bold: true
                        Layout.alignment: Qt.AlignHCenter
                    }
                    Label {
                        text: "Every book you have finished"
                        color: "#e8dccb"
                        font.pixelSize: 14
                        Layout.alignment: Qt.AlignHCenter
                    }
                }
            }

            // Start-up work on a large library goes on behind a usable menu.
            ColumnLayout {
                objectName: "startupProgress"
                visible: ctl.repairing
                Layout.fillWidth: true
                spacing: 2
                Label {
                    text: "Checking your library… " + Math.round(ctl.repairProgress * 100) + "%"
                    color: Theme.muted
                    font.pixelSize: 12
                }
                ProgressBar {
                    Layout.fillWidth: true
                    value: ctl.repairProgress
                }
            }

            MenuButton {
                objectName: "ControlButton"
                Layout.fillWidth: true
                Layout.topMargin: 6
                text: ctl.menuOpen ? "Close Menu" : "Menu"
                iconName: ctl.menuOpen ? "close" : "menu"
                borderColor: "red"
                onClicked: ctl.HandleSelection()
            }

            Repeater {
                model: ctl.MenuButtons
                MenuButton {
                    required property var modelData
                    required property int index
                    objectName: modelData.outlet
                    Layout.fillWidth: true
                    text: modelData.title
                    iconName: modelData.icon
                    hiddenState: ctl.hiddenStates[index]
                    onClicked: ctl.openEntry(index)
                }
            }
        }
    }

    AlertHost { controller: ctl }
}
