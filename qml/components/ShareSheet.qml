import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise

// The desktop's share sheet: shows what a screen shares (text and picture)
// and copies the text to the clipboard.
Dialog {
    id: sheet
    property PlatformServices platform
    property string text

    objectName: "shareSheet"
    // No shadow layer: without a GPU it draws nothing and the sheet shows no background.
    Material.elevation: 0
    modal: true
    title: "Share"
    anchors.centerIn: Overlay.overlay
    width: parent ? parent.width - 32 : 320
    height: Math.min(parent ? parent.height - 64 : 560, implicitHeight)

    Connections {
        target: sheet.platform
        function onShareRequested(text, image, files) {
            sheet.text = text
            shareImage.image = image
            sheet.open()
        }
    }

    contentItem: ColumnLayout {
        spacing: 8
        CoverView {
            id: shareImage
            objectName: "shareImage"
            // Text alone leaves no empty frame above it.
            visible: hasImage
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredWidth: 84
            Layout.preferredHeight: 120
        }
        ScrollView {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredHeight: shareText.implicitHeight
            TextArea {
                id: shareText
                objectName: "shareText"
                readOnly: true
                wrapMode: TextEdit.Wrap
                text: sheet.text
                font.pixelSize: 14
            }
        }
    }

    footer: DialogButtonBox {
        Button {
            objectName: "shareCopyButton"
            text: "Copy"
            flat: true
            DialogButtonBox.buttonRole: DialogButtonBox.ActionRole
            onClicked: {
                shareText.selectAll()
                shareText.copy()
                shareText.deselect()
            }
        }
        Button {
            text: "Close"
            flat: true
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
        }
    }
}
