import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// The date-read field of a book form: its input is a date picker with the
// "Done" / "Today" toolbar, presented as the settings ask (wheels, compact
// pop-up calendar, inline calendar; automatic is the pop-up calendar).
FormField {
    id: field
    required property QtObject form
    readonly property bool inlineStyle: form.datePickerStyle === 3
    readonly property bool wheelStyle: form.datePickerStyle === 1
    property bool editing: false

    text: form.dateTextField
    mandatory: true
    readOnly: true
    onTapped: {
        editing = true
        if (!inlineStyle)
            popup.open()
    }

    Connections {
        target: field.form
        function onEditingEnded() {
            field.editing = false
            popup.close()
        }
    }

    component DateToolbar: ToolBar {
        Layout.fillWidth: true
        RowLayout {
            anchors.fill: parent
            ToolButton { objectName: "dateDone"; text: "Done"; Material.foreground: "white"; onClicked: field.form.doneClick() }
            Item { Layout.fillWidth: true }
            ToolButton { objectName: "dateToday"; text: "Today"; Material.foreground: "white"; onClicked: field.form.todayClick() }
        }
    }

    component Calendar: ColumnLayout {
        id: calendar
        property int year: field.form.pickerYear > 0 ? field.form.pickerYear : 2000
        property int month: Math.max(0, field.form.pickerMonth - 1)
        spacing: 0
        RowLayout {
            Layout.fillWidth: true
            ToolButton {
                contentItem: Icon { name: "chevron_left"; color: Theme.primary }
                onClicked: if (calendar.month === 0) { calendar.month = 11; calendar.year-- } else calendar.month--
            }
            Label {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                text: grid.title
                font.bold: true
            }
            ToolButton {
                contentItem: Icon { name: "chevron_right"; color: Theme.primary }
                onClicked: if (calendar.month === 11) { calendar.month = 0; calendar.year++ } else calendar.month++
            }
        }
        DayOfWeekRow { Layout.fillWidth: true; locale: grid.locale }
        MonthGrid {
            id: grid
            Layout.fillWidth: true
            year: calendar.year
            month: calendar.month
            delegate: Label {
                required property var model
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                opacity: model.month === grid.month ? 1 : 0.35
                text: model.day
                readonly property bool chosen: model.year === field.form.pickerYear
                    && model.month === field.form.pickerMonth - 1 && model.day === field.form.pickerDay
                color: chosen ? "white" : Theme.ink
                background: Rectangle {
                    visible: parent.chosen
                    radius: height / 2
                    color: Theme.accent
                }
            }
            onClicked: date => field.form.dateChanged(date.getFullYear(), date.getMonth() + 1, date.getDate())
        }
    }

    component Wheels: RowLayout {
        spacing: 0
        Tumbler {
            id: monthWheel
            Layout.fillWidth: true
            model: 12
            currentIndex: field.form.pickerMonth - 1
            delegate: Label {
                required property int index
                text: Qt.locale().standaloneMonthName(index, Locale.LongFormat)
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                opacity: 1.0 - Math.abs(Tumbler.displacement) / 3
            }
            onMovingChanged: if (!moving) wheels.changed()
        }
        Tumbler {
            id: dayWheel
            Layout.preferredWidth: 64
            model: 31
            currentIndex: field.form.pickerDay - 1
            delegate: Label {
                required property int index
                text: index + 1
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                opacity: 1.0 - Math.abs(Tumbler.displacement) / 3
            }
            onMovingChanged: if (!moving) wheels.changed()
        }
        Tumbler {
            id: yearWheel
            Layout.preferredWidth: 90
            model: 200
            currentIndex: field.form.pickerYear - 1900
            delegate: Label {
                required property int index
                text: 1900 + index
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                opacity: 1.0 - Math.abs(Tumbler.displacement) / 3
            }
            onMovingChanged: if (!moving) wheels.changed()
        }
        QtObject {
            id: wheels
            function changed() {
                field.form.dateChanged(1900 + yearWheel.currentIndex, monthWheel.currentIndex + 1,
                                       dayWheel.currentIndex + 1)
            }
        }
    }

    // Inline: the calendar opens in the form itself.
    ColumnLayout {
        Layout.fillWidth: true
        visible: field.inlineStyle && field.editing
        spacing: 0
        DateToolbar {}
        Loader {
            Layout.fillWidth: true
            active: field.inlineStyle
            sourceComponent: Calendar {}
        }
    }

    Popup {
        id: popup
        objectName: "datePopup"
        parent: Overlay.overlay
        width: parent.width
        x: 0
        y: parent.height - height
        modal: true
        padding: 0
        background: Rectangle { color: "white" }
        onClosed: field.editing = false

        ColumnLayout {
            width: parent.width
            spacing: 0
            DateToolbar {}
            Loader {
                Layout.fillWidth: true
                Layout.preferredHeight: field.wheelStyle ? 200 : 300
                sourceComponent: field.wheelStyle ? wheelsComponent : calendarComponent
            }
        }
    }
    Component { id: wheelsComponent; Wheels {} }
    Component { id: calendarComponent; Calendar {} }
}
