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

    RowLayout {
        id: wheelRow
        objectName: "datePickerWheels"
        visible: picker.wheels
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 4
        Tumbler {
            id: monthWheel
            model: 12
            visibleItemCount: 5
            Layout.preferredWidth: 130
            currentIndex: Math.max(0, picker.month - 1)
            delegate: Label {
                required property int index
                text: Qt.locale().standaloneMonthName(index)
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: 18
                opacity: 1.0 - Math.abs(Tumbler.displacement) / (monthWheel.visibleItemCount / 2)
            }
            onMovingChanged: if (!moving) picker.pick(picker.year, currentIndex + 1, picker.day)
        }
        Tumbler {
            id: dayWheel
            model: picker.daysIn(picker.year, picker.month)
            visibleItemCount: 5
            Layout.preferredWidth: 60
            currentIndex: Math.max(0, picker.day - 1)
            delegate: Label {
                required property int index
                text: index + 1
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: 18
                opacity: 1.0 - Math.abs(Tumbler.displacement) / (dayWheel.visibleItemCount / 2)
            }
            onMovingChanged: if (!moving) picker.pick(picker.year, picker.month, currentIndex + 1)
        }
        Tumbler {
            id: yearWheel
            model: picker.lastYear - picker.firstYear + 1
            visibleItemCount: 5
            Layout.preferredWidth: 80
            currentIndex: picker.year - picker.firstYear
            delegate: Label {
                required property int index
                text: picker.firstYear + index
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: 18
                opacity: 1.0 - Math.abs(Tumbler.displacement) / (yearWheel.visibleItemCount / 2)
            }
            onMovingChanged: if (!moving) picker.pick(picker.firstYear + currentIndex, picker.month, picker.day)
        }
    }
    // The wheels follow the chosen day after a pick, whatever the user scrolled.
    onYearChanged: yearWheel.currentIndex = year - firstYear
    onMonthChanged: monthWheel.currentIndex = Math.max(0, month - 1)
    onDayChanged: dayWheel.currentIndex = Math.max(0, day - 1)

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
        background: Rectangle {
            implicitHeight: 40
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
