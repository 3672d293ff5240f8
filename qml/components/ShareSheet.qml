import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise

// The desktop's share sheet: shows what a screen shares (text, picture and
// each address on its own) and copies them to the clipboard.
Dialog {
    id: sheet
    property PlatformServices platform
    property string text
    property var links: []

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
        function onShareRequested(text, image, files, links) {
            sheet.text = text
            sheet.links = (links || []).map(link => link.toString())
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
                visible: text.length > 0
                readOnly: true
                wrapMode: TextEdit.Wrap
                text: sheet.text
                font.pixelSize: 14
            }
        }
        Repeater {
            model: sheet.links
            Label {
                required property string modelData
                required property int index
                objectName: "shareLink" + index
                Layout.fillWidth: true
                text: modelData
                color: Theme.accent
                wrapMode: Text.WrapAnywhere
                font.pixelSize: 14
            }
        }
        // What Copy puts on the clipboard: every item, one a line.
        TextEdit {
            id: allItems
            visible: false
            text: [sheet.text].concat(sheet.links).filter(item => item.length > 0).join("\n")
        }
    }

    footer: DialogButtonBox {
        Button {
            objectName: "shareCopyButton"
            text: "Copy"
            flat: true
            DialogButtonBox.buttonRole: DialogButtonBox.ActionRole
            onClicked: {
                allItems.selectAll()
                allItems.copy()
                allItems.deselect()
            }
        }
        Button {
            text: "Close"
            flat: true
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
        }
    }
}
