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

    component Calendar: MonthCalendar {
        year: field.form.pickerYear > 0 ? field.form.pickerYear : 2000
        month: Math.max(1, field.form.pickerMonth)
        day: field.form.pickerDay
        onPicked: (y, m, d) => field.form.dateChanged(y, m, d)
    }

    component Wheels: DateWheels {
        year: field.form.pickerYear
        month: field.form.pickerMonth
        day: field.form.pickerDay
        onPicked: (y, m, d) => field.form.dateChanged(y, m, d)
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
                Layout.preferredHeight: item ? item.implicitHeight : 0
                sourceComponent: field.wheelStyle ? wheelsComponent : calendarComponent
            }
        }
    }
    Component { id: wheelsComponent; Wheels {} }
    Component { id: calendarComponent; Calendar {} }
}
