import QtQuick

// A Material icon by name (the font's ligatures turn the name into the glyph).
Text {
    property string name
    property int size: 24
    text: name
    font.family: "Material Icons"
    font.pixelSize: size
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
