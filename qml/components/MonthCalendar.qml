import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A month of days with the month's name and arrows; the chosen day is marked.
ColumnLayout {
    id: cal
    property int year
    property int month // 1-12
    property int day
    property int shownYear: year
    property int shownMonth: month // 1-12
    signal picked(int year, int month, int day)

    spacing: 2

    RowLayout {
        Layout.fillWidth: true
        ToolButton {
            contentItem: Icon { name: "chevron_left"; color: Theme.accent }
            onClicked: {
                if (cal.shownMonth === 1) { cal.shownMonth = 12; cal.shownYear -= 1 } else cal.shownMonth -= 1
            }
        }
        Label {
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: Qt.locale().standaloneMonthName(cal.shownMonth - 1) + " " + cal.shownYear
            font.bold: true
            font.pixelSize: 16
        }
        ToolButton {
            contentItem: Icon { name: "chevron_right"; color: Theme.accent }
            onClicked: {
                if (cal.shownMonth === 12) { cal.shownMonth = 1; cal.shownYear += 1 } else cal.shownMonth += 1
            }
        }
    }
    DayOfWeekRow {
        Layout.fillWidth: true
        locale: grid.locale
        delegate: Label {
            required property string shortName
            text: shortName
            color: Theme.muted
            font.pixelSize: 12
            horizontalAlignment: Text.AlignHCenter
        }
    }
    MonthGrid {
        id: grid
        objectName: "monthGrid"
        Layout.fillWidth: true
        // The grid sizes its cells from its own size: six rows of weeks, each a finger high.
        Layout.preferredHeight: 6 * Theme.touchTarget
        spacing: 0
        month: Math.max(0, cal.shownMonth - 1)
        year: cal.shownYear
        locale: Qt.locale()
        delegate: Item {
            id: cell
            required property var model
            readonly property bool chosen: cell.model.year === cal.year && cell.model.month + 1 === cal.month
                                           && cell.model.day === cal.day
            // A circle whatever the cell's proportions.
            Rectangle {
                anchors.centerIn: parent
                width: Math.min(cell.width, cell.height) - 6
                height: width
                radius: width / 2
                color: cell.chosen ? Theme.accent : "transparent"
            }
            Label {
                anchors.centerIn: parent
                text: cell.model.day
                font.pixelSize: 16
                color: cell.chosen ? "white" : cell.model.today ? Theme.accent
                     : cell.model.month === grid.month && cal.enabled ? Theme.ink : Theme.muted
                font.bold: cell.chosen || cell.model.today
            }
            TapHandler {
                onTapped: cal.picked(cell.model.year, cell.model.month + 1, cell.model.day)
            }
        }
    }
}
