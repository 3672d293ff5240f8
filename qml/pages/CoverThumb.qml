import QtQuick
import QtQuick.Controls
import "../components"

// A book's cover, or a coloured stand-in with its initial when it has none.
Item {
    id: thumb
    property string source
    property string title

    Rectangle {
        id: placeholder
        anchors.fill: parent
        radius: 6
        visible: thumb.source === "" || cover.status !== Image.Ready
        // One of a few muted shades, the same for a title every time.
        readonly property var shades: ["#8d6e63", "#5c6bc0", "#26a69a", "#7e57c2", "#ef6c00", "#546e7a"]
        color: shades[Math.abs(thumb.hash(thumb.title)) % shades.length]
        Label {
            anchors.centerIn: parent
            text: thumb.title.length > 0 ? thumb.title.charAt(0).toUpperCase() : "?"
            color: "white"
            font.pixelSize: Math.max(14, thumb.width * 0.4)
            font.bold: true
            opacity: 0.9
        }
        Rectangle {
            anchors.left: parent.left
            width: 4
            height: parent.height
            radius: 2
            color: Qt.darker(placeholder.color, 1.25)
        }
    }
    Image {
        id: cover
        objectName: "coverImage"
        anchors.fill: parent
        source: thumb.source
        sourceSize: Qt.size(240, 360)
        fillMode: Image.PreserveAspectCrop
        asynchronous: true
        cache: true
        visible: status === Image.Ready
    }
    Rectangle {
        anchors.fill: parent
        radius: 6
        color: "transparent"
        border.color: "#33000000"
        border.width: 1
    }

    function hash(s) {
        let h = 0
        for (let i = 0; i < s.length; ++i)
            h = (h * 31 + s.charCodeAt(i)) | 0
        return h
    }
}
