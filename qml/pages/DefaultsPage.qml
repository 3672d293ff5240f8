import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise
import "../components"

// The default date read and the date picker's style.
ScreenPage {
    id: page
    title: ctl.title

    DefaultsViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    component SwitchRow: RowLayout {
        id: switchRow
        property alias label: rowLabel.text
        property alias labelName: rowLabel.objectName
        property alias switchName: rowSwitch.objectName
        property bool on
        signal toggled(bool isOn)
        Layout.fillWidth: true
        Label {
            id: rowLabel
            Layout.fillWidth: true
            font.pixelSize: 17
            color: Theme.ink
        }
        Switch {
            id: rowSwitch
            checked: switchRow.on
            // Our own track: the style's pale one is hard to see when off, and its
            // raised handle's shadow layer draws nothing without a GPU.
            indicator: Rectangle {
                implicitWidth: 44
                implicitHeight: 24
                x: rowSwitch.leftPadding + (rowSwitch.availableWidth - width) / 2
                y: rowSwitch.topPadding + (rowSwitch.availableHeight - height) / 2
                radius: height / 2
                color: rowSwitch.checked ? Theme.accent : Theme.control
                Rectangle {
                    x: 2 + rowSwitch.visualPosition * (parent.width - width - 4)
                    y: 2
                    width: 20
                    height: 20
                    radius: 10
                    color: "white"
                    Behavior on x {
                        enabled: !rowSwitch.pressed
                        SmoothedAnimation { duration: 200 }
                    }
                }
            }
            onToggled: {
                switchRow.toggled(checked)
                checked = Qt.binding(() => switchRow.on)
            }
        }
    }

    // Still readable when off: the style's disabled grey is too faint.
    component ToolbarButton: Button {
        id: toolbarButton
        flat: true
        contentItem: Label {
            text: toolbarButton.text.toUpperCase()
            font.bold: true
            color: toolbarButton.enabled ? Theme.accent : Theme.muted
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }

    component Card: Rectangle {
        default property alias content: cardColumn.data
        Layout.fillWidth: true
        implicitHeight: cardColumn.implicitHeight + 24
        radius: Theme.rowRadius
        border.width: 1
        border.color: "#d6d0c8"
        color: "white"
        ColumnLayout {
            id: cardColumn
            x: 14
            y: 12
            width: parent.width - 28
            spacing: 6
        }
    }

    // A tap outside ends editing.
    MouseArea {
        anchors.fill: parent
        onClicked: page.forceActiveFocus()
    }

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 2 * Theme.margin
        clip: true

        ColumnLayout {
            id: column
            x: Theme.margin
            y: Theme.margin
            width: parent.width - 2 * Theme.margin
            spacing: 14

            Card {
                SwitchRow {
                    label: "Use a Default Date Read"
                    switchName: "DefaultDateSwitch"
                    on: ctl.DefaultDateSwitch
                    onToggled: isOn => ctl.SwitchChanged(isOn)
                }
                Label {
                    objectName: "DefaultDateLabel"
                    visible: ctl.DefaultDateSwitch
                    text: "Default Date"
                    color: Theme.muted
                    font.pixelSize: 14
                }
                TextField {
                    id: dateField
                    objectName: "DefaultDateTextField"
                    visible: ctl.DefaultDateSwitch
                    Layout.fillWidth: true
                    readOnly: true
                    text: ctl.DefaultDateTextField
                    placeholderText: "Choose a date below"
                    placeholderTextColor: Theme.muted
                    font.pixelSize: 17
                    leftPadding: 10
                    background: Rectangle {
                        implicitHeight: Theme.touchTarget
                        radius: 5
                        border.width: 1
                        border.color: "black"
                        color: "white"
                    }
                }
            }

            Card {
                Label {
                    objectName: "SelectDPLabel"
                    text: "Date Picker Style"
                    font.pixelSize: 15
                    font.bold: true
                    color: Theme.primary
                }
                SwitchRow {
                    label: "Date Wheel"
                    labelName: "UseDateWheelLabel"
                    switchName: "DateWheelSwitch"
                    on: ctl.UseDateWheel
                    onToggled: isOn => ctl.DateWheelSwitch(isOn)
                }
                SwitchRow {
                    label: "Compact Date"
                    labelName: "UseCompactDateLabel"
                    switchName: "DateCompactSwitch"
                    on: ctl.UseCompactDate
                    onToggled: isOn => ctl.DateCompactSwitch(isOn)
                }
                SwitchRow {
                    label: "Inline Date"
                    labelName: "UseInlineDateLabel"
                    switchName: "DateInlineSwitch"
                    on: ctl.UseInlineDate
                    onToggled: isOn => ctl.DateInlineSwitch(isOn)
                }
            }

            Card {
                // The date toolbar over the picker, as on the book form.
                RowLayout {
                    Layout.fillWidth: true
                    enabled: ctl.DefaultDateSwitch
                    ToolbarButton {
                        objectName: "doneButton"
                        text: "Done"
                        onClicked: ctl.doneClick()
                    }
                    Item { Layout.fillWidth: true }
                    ToolbarButton {
                        objectName: "todayButton"
                        text: "Today"
                        onClicked: ctl.todayClick()
                    }
                }
                DatePicker {
                    objectName: "datePickerView"
                    Layout.fillWidth: true
                    enabled: ctl.DefaultDateSwitch
                    pickerStyle: ctl.datePickerStyle
                    year: ctl.pickerYear
                    month: ctl.pickerMonth
                    day: ctl.pickerDay
                    onPicked: (y, m, d) => ctl.dateChanged(y, m, d)
                }
                Label {
                    visible: !ctl.DefaultDateSwitch
                    Layout.fillWidth: true
                    text: "Turn on the default date to choose one."
                    color: Theme.muted
                    font.pixelSize: 13
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
