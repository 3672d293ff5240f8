import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// The printed report: built once into the text view, then printed or shared.
ScreenPage {
    id: page
    title: ctl.title

    PrintGroupByBooksViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    barActions: Component {
        RowLayout {
            spacing: 0
            ToolButton {
                objectName: "ShareButton"
                enabled: ctl.built
                contentItem: Icon { name: "share"; color: "white"; opacity: parent.enabled ? 1 : 0.5 }
                onClicked: ctl.ShareButtonTapped()
                Accessible.name: "Share"
            }
        }
    }

    ShareSheet { platform: page.appDelegate.platform }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: 10

        RowLayout {
            Layout.fillWidth: true
            spacing: 10
            BorderedButton {
                objectName: "CreateFileButton"
                Layout.fillWidth: true
                visible: !ctl.CreateFileButtonHidden
                enabled: !ctl.busy
                text: "Create Report"
                onClicked: ctl.CreateFileButtonTapped()
            }
            BorderedButton {
                objectName: "PrintButton"
                Layout.fillWidth: true
                enabled: ctl.built
                text: "Print"
                background: Rectangle {
                    radius: 10
                    border.width: 2
                    border.color: "black"
                    color: "white"
                }
                onClicked: ctl.PrintButtonTapped()
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            visible: ctl.busy
            spacing: 2
            ProgressBar {
                objectName: "progress"
                Layout.fillWidth: true
                value: ctl.progress
            }
            Label {
                objectName: "progressText"
                Layout.alignment: Qt.AlignHCenter
                text: ctl.progressText
                color: Theme.muted
            }
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: 5
            border.width: 1
            border.color: "black"
            color: "white"
            clip: true
            ScrollView {
                anchors.fill: parent
                anchors.margins: 1
                TextArea {
                    id: fileTextView
                    objectName: "FileTextView"
                    readOnly: true
                    wrapMode: TextEdit.Wrap
                    textFormat: TextEdit.RichText
                    padding: 8
                    background: null
                    Connections {
                        target: ctl
                        // The reader stays where they are while the report grows below.
                        function onFileTextAppended(html) {
                            const cursor = fileTextView.cursorPosition
                            const end = fileTextView.length
                            fileTextView.insert(end, html)
                            fileTextView.cursorPosition = cursor < end ? cursor : 0
                        }
                    }
                }
            }
        }
    }
}
