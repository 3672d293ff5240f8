import QtQuick

// Four corner brackets: at each corner two strokes along the edges.
Item {
    id: brackets
    property color color: "red"
    property real length: 20
    property real lineWidth: 2

    Repeater {
        model: 4
        Item {
            required property int index
            readonly property bool atRight: index % 2 === 1
            readonly property bool atBottom: index >= 2
            x: atRight ? brackets.width - brackets.length : 0
            y: atBottom ? brackets.height - brackets.length : 0
            width: brackets.length
            height: brackets.length
            Rectangle {
                width: brackets.length
                height: brackets.lineWidth
                y: parent.atBottom ? brackets.length - brackets.lineWidth : 0
                color: brackets.color
            }
            Rectangle {
                width: brackets.lineWidth
                height: brackets.length
                x: parent.atRight ? brackets.length - brackets.lineWidth : 0
                color: brackets.color
            }
        }
    }
}
