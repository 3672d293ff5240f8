import QtQuick
import QtQuick.Controls

// A read-only text view with a thin black border; long texts are cut for the
// screen, the full text stays with the controller.
Rectangle {
    id: view
    property string text
    property int maxShown: 200000
    property alias textArea: area

    border.width: 1
    border.color: "black"
    color: "white"
    radius: 4
    clip: true

    ScrollView {
        anchors.fill: parent
        anchors.margins: 1
        TextArea {
            id: area
            readOnly: true
            wrapMode: TextEdit.Wrap
            color: "black"
            font.pixelSize: 13
            background: null
            text: view.text.length > view.maxShown ? view.text.substring(0, view.maxShown) + "\n…" : view.text
        }
    }
}
