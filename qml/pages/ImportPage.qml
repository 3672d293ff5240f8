import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title

    ImportViewController {
        id: ctl
        appDelegate: page.appDelegate
        onPresentDocumentPicker: picker.open()
        onUnwind: name => page.unwind(name)
    }
    Component.onCompleted: ctl.viewDidLoad()

    FileDialog {
        id: picker
        objectName: "documentPicker"
        title: "Select the export file"
        fileMode: FileDialog.OpenFile
        nameFilters: ["All files (*)", "Export files (*.csv)"]
        onAccepted: ctl.documentPicker(selectedFile)
        onRejected: ctl.documentPickerWasCancelled()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: 10

        BorderedTextView {
            objectName: "HelpTextView"
            Layout.fillWidth: true
            Layout.preferredHeight: 110
            text: ctl.HelpTextView
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 10
            BorderedButton {
                objectName: "LoadFileButton"
                Layout.fillWidth: true
                text: "Select File"
                enabled: ctl.LoadFileButtonEnabled
                onClicked: ctl.LoadFile()
            }
            BorderedButton {
                objectName: "ImportButton"
                Layout.fillWidth: true
                text: "Import File"
                enabled: ctl.ImportButtonEnabled
                onClicked: ctl.ImportTextFile()
            }
        }
        ProgressBar {
            objectName: "progress"
            Layout.fillWidth: true
            visible: ctl.busy
            value: ctl.progress
        }
        BorderedTextView {
            objectName: "ImportTextView"
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: ctl.ImportTextView
        }
    }

    AlertHost { controller: ctl }
}
