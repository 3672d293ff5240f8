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

    FileDialog {
        id: notesSaver
        objectName: "notesSaver"
        title: "Save the list of rows not imported"
        fileMode: FileDialog.SaveFile
        defaultSuffix: "txt"
        nameFilters: ["Text files (*.txt)"]
        onAccepted: ctl.saveNotes(selectedFile)
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
        CheckBox {
            objectName: "includeUnread"
            Layout.fillWidth: true
            visible: ctl.fileKind !== ""
            enabled: ctl.ImportButtonEnabled
            text: "Also books not marked read"
            checked: ctl.includeUnread
            onToggled: ctl.includeUnread = checked
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
        BorderedButton {
            objectName: "SaveNotesButton"
            Layout.fillWidth: true
            visible: ctl.notesText !== "" && !ctl.busy && !ctl.ImportButtonEnabled
            text: "Save List of Rows Not Imported"
            onClicked: notesSaver.open()
        }
    }

    AlertHost { controller: ctl }
}
