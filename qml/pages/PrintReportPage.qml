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
            Flickable {
                id: flick
                anchors.fill: parent
                anchors.margins: 1
                contentWidth: width
                // The reader stays where they are while the report grows below.
                contentHeight: fileTextView.contentHeight
                boundsBehavior: Flickable.StopAtBounds
                activeFocusOnTab: true
                ScrollBar.vertical: ScrollBar {}
                TapHandler { onTapped: flick.forceActiveFocus() }
                Keys.onPressed: function(event) {
                    const page = flick.height - 40
                    const steps = { [Qt.Key_Up]: -40, [Qt.Key_Down]: 40, [Qt.Key_PageUp]: -page,
                                    [Qt.Key_PageDown]: page, [Qt.Key_Space]: page,
                                    [Qt.Key_Home]: -flick.contentHeight, [Qt.Key_End]: flick.contentHeight }
                    if (!(event.key in steps))
                        return
                    const bottom = Math.max(0, flick.contentHeight - flick.height)
                    flick.contentY = Math.max(0, Math.min(bottom, flick.contentY + steps[event.key]))
                    event.accepted = true
                }
                DocumentView {
                    id: fileTextView
                    objectName: "FileTextView"
                    // Drawn where the reader looks; the document scrolls beneath.
                    y: flick.contentY
                    width: flick.width
                    height: flick.height
                    contentY: flick.contentY
                    padding: 8
                    document: ctl.document
                }
            }
        }
    }
}
