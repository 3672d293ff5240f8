import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A date-only picker in one of the platform's styles: 1 wheels (tumblers),
// 2 compact (a field with a pop-up calendar), 3 inline (a calendar);
// automatic (0) shows compact, as the phone does for dates.
Item {
    id: picker
    property int pickerStyle: 0
    property int year: 2000
    property int month: 1 // 1-12
    property int day: 1
    signal picked(int year, int month, int day)

    readonly property int firstYear: 1900
    readonly property int lastYear: 2100
    readonly property bool wheels: pickerStyle === 1
    readonly property bool inline: pickerStyle === 3
    readonly property bool compact: !wheels && !inline

    implicitWidth: 320
    implicitHeight: wheels ? wheelRow.implicitHeight : inline ? calendar.implicitHeight : compactButton.implicitHeight

    function daysIn(y, m) { return new Date(y, m, 0).getDate() }
    function pick(y, m, d) { picker.picked(y, m, Math.min(d, daysIn(y, m))) }

    DateWheels {
        id: wheelRow
        objectName: "datePickerWheels"
        visible: picker.wheels
        anchors.horizontalCenter: parent.horizontalCenter
        year: picker.year
        month: picker.month
        day: picker.day
        firstYear: picker.firstYear
        lastYear: picker.lastYear
        onPicked: (y, m, d) => picker.pick(y, m, d)
    }

    MonthCalendar {
        id: calendar
        objectName: "datePickerInline"
        visible: picker.inline
        width: parent.width
        year: picker.year
        month: picker.month
        day: picker.day
        onPicked: (y, m, d) => picker.pick(y, m, d)
    }

    Button {
        id: compactButton
        objectName: "datePickerCompact"
        visible: picker.compact
        anchors.horizontalCenter: parent.horizontalCenter
        flat: true
        font.capitalization: Font.MixedCase
        text: new Date(picker.year, picker.month - 1, picker.day).toLocaleDateString(Qt.locale(), Locale.ShortFormat)
        font.pixelSize: 17
        // Dimmed when off, yet still readable: the style's disabled grey is too faint.
        contentItem: Label {
            text: compactButton.text
            font: compactButton.font
            color: compactButton.enabled ? Theme.ink : Theme.muted
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            implicitHeight: Theme.touchTarget
            radius: 8
            color: Qt.rgba(0, 0, 0, 0.07)
        }
        onClicked: popup.open()
    }

    Popup {
        id: popup
        objectName: "datePickerPopup"
        parent: Overlay.overlay
        anchors.centerIn: parent
        width: Math.min(parent ? parent.width - 32 : 340, 360)
        modal: true
        padding: 12
        background: Rectangle { radius: 14; color: "white" }
        contentItem: MonthCalendar {
            year: picker.year
            month: picker.month
            day: picker.day
            onPicked: (y, m, d) => { picker.pick(y, m, d); popup.close() }
        }
    }
}
