import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// One labelled text field of the book form. A required label is red; a
// digits-only field refuses a change its controller's check refuses.
ColumnLayout {
    id: field
    property string label
    property string text
    property bool mandatory: false
    property bool readOnly: false
    property QtObject checker: null
    property alias input: input
    signal edited(string text)
    signal tapped()
    signal doubleTapped()

    spacing: 2
    Layout.fillWidth: true

    Label {
        text: field.label
        color: field.mandatory ? "red" : Theme.muted
        font.pixelSize: 13
        font.bold: field.mandatory
    }
    TextField {
        id: input
        property string accepted: field.text
        Layout.fillWidth: true
        text: field.text
        // Filled from elsewhere, a long text shows its beginning.
        onTextChanged: if (!activeFocus) cursorPosition = 0
        readOnly: field.readOnly
        inputMethodHints: field.checker ? Qt.ImhDigitsOnly : Qt.ImhNone
        topPadding: 8
        bottomPadding: 8
        leftPadding: 8
        background: Rectangle {
            radius: 5
            border.width: input.activeFocus ? 2 : 1
            border.color: input.activeFocus ? Theme.accent : "#8a817c"
            color: "white"
        }
        onTextEdited: {
            if (field.checker && !field.checker.shouldChangeCharacters(accepted, text)) {
                const cursor = Math.max(0, cursorPosition - (text.length - accepted.length))
                text = accepted
                cursorPosition = Math.min(cursor, text.length)
                return
            }
            accepted = text
            field.edited(text)
        }
        TapHandler {
            enabled: field.readOnly
            onTapped: field.tapped()
        }
        // Two taps within the platform's double-click interval; counted here
        // because the field's own press handling keeps TapHandler's count at one.
        TapHandler {
            property double lastTap: 0
            onTapped: {
                const now = Date.now()
                if (now - lastTap <= Qt.styleHints.mouseDoubleClickInterval) {
                    lastTap = 0
                    field.doubleTapped()
                } else {
                    lastTap = now
                }
            }
        }
    }
}
