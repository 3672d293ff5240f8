import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Tomewise
import "../components"

// Scanning a photo: a picture of the barcode, chosen from a file or taken
// from the clipboard, is read; the value shows below it and goes to the form.
ScreenPage {
    id: page
    readonly property alias controller: ctl
    readonly property alias pictureDialog: fileDialog
    title: ctl.title

    CaptureViewControllerIOS16 {
        id: ctl
        appDelegate: page.appDelegate
        onUnwind: name => page.unwind(name)
        onNavigate: target => page.openPage(target)
        onDocumentPickerRequested: fileDialog.open()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: 12

        Label {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            color: Theme.muted
            text: "Choose a picture of the book's barcode, or copy one and tap Scan."
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            radius: 5
            border.width: 1
            border.color: "#8a817c"
            color: "white"
            clip: true
            CoverView {
                objectName: "picture"
                anchors.fill: parent
                anchors.margins: 6
                image: ctl.picture
            }
            Label {
                anchors.centerIn: parent
                visible: !ctl.hasPicture
                text: "No picture"
                color: Theme.muted
            }
            BusyIndicator {
                anchors.centerIn: parent
                running: ctl.scanning
            }
        }
        Label {
            objectName: "DisplayLabel"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            font.pixelSize: 20
            font.bold: true
            text: ctl.DisplayLabel
        }
        RowLayout {
            spacing: 8
            BorderedButton {
                objectName: "choosePictureButton"
                Layout.fillWidth: true
                text: "Choose Picture"
                onClicked: ctl.choosePicture()
            }
            BorderedButton {
                objectName: "StartScanning"
                Layout.fillWidth: true
                text: "Scan"
                onClicked: ctl.StartScanning()
            }
        }
    }

    FileDialog {
        id: fileDialog
        title: "Choose a picture of the barcode"
        nameFilters: ["Images (*.jpg *.jpeg *.png *.gif *.bmp *.webp *.tif *.tiff)", "All files (*)"]
        onAccepted: ctl.pictureChosen(selectedFile)
    }

    AlertHost { controller: ctl }
}
