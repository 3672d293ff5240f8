import QtCore
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
        title: "Select the file to import"
        fileMode: FileDialog.OpenFile
        nameFilters: ["All files (*)", "Export files (*.csv)"]
        onAccepted: ctl.documentPicker(selectedFile)
        onRejected: ctl.documentPickerWasCancelled()
    }

    SaveFileDialog {
        id: notesSaver
        objectName: "notesSaver"
        title: "Save the list of rows not imported"
        width: page.width - 2 * Theme.margin
        height: Math.min(page.height - 2 * Theme.margin, 560)
        onSaved: file => ctl.saveNotes(file)
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
        Label {
            Layout.fillWidth: true
            wrapMode: Text.WordWrap
            font.pixelSize: 13
            color: "#555555"
            text: "A Goodreads or StoryGraph CSV export can be imported too: you see what will happen before anything is saved."
            visible: ctl.LoadFileButtonEnabled
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
            onClicked: {
                notesSaver.folder = StandardPaths.writableLocation(StandardPaths.DocumentsLocation)
                notesSaver.fileName = "Rows not imported.txt"
                notesSaver.open()
            }
        }
    }

    AlertHost { controller: ctl }
}
