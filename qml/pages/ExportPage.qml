import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title

    ExportViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    // The desktop's share sheet for the saved file: a save dialog.
    Connections {
        target: page.appDelegate.platform
        function onShareRequested(text, image, files) {
            if (files.length > 0 && page.StackView.status === StackView.Active) {
                saveDialog.selectedFile = files[0]
                saveDialog.open()
            }
        }
    }
    FileDialog {
        id: saveDialog
        objectName: "saveDialog"
        title: "Save To Files"
        fileMode: FileDialog.SaveFile
        nameFilters: ["Export files (*.csv)", "All files (*)"]
        onAccepted: ctl.saveCopy(selectedFile)
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: 10

        BorderedTextView {
            objectName: "HelpTextView"
            Layout.fillWidth: true
            Layout.preferredHeight: 150
            text: ctl.HelpTextView
        }
        BorderedButton {
            objectName: "ExportButton"
            Layout.fillWidth: true
            text: "Create Export File"
            enabled: ctl.ExportButtonEnabled
            onClicked: ctl.CreateUpdateFile()
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 10
            BorderedButton {
                objectName: "SaveButton"
                Layout.fillWidth: true
                text: "Save To Files"
                enabled: ctl.SaveButtonEnabled
                onClicked: ctl.SaveToFiles()
            }
            BorderedButton {
                objectName: "EmailButton"
                Layout.fillWidth: true
                text: "Email File"
                enabled: ctl.EmailButtonEnabled
                onClicked: ctl.WriteTextFile()
            }
        }
        ProgressBar {
            objectName: "progress"
            Layout.fillWidth: true
            visible: ctl.busy
            value: ctl.progress
        }
        BorderedTextView {
            objectName: "ExportTextView"
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: ctl.ExportTextView
        }
    }

    AlertHost { controller: ctl }
}
