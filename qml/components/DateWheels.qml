import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// Month, day and year wheels; a flick, a drag or a mouse wheel turns them.
RowLayout {
    id: wheels
    property int year: 2000
    property int month: 1 // 1-12
    property int day: 1
    property int firstYear: 1900
    property int lastYear: 2100
    signal picked(int year, int month, int day)

    function daysIn(y, m) { return new Date(y, m, 0).getDate() }
    function pick(y, m, d) { wheels.picked(y, m, Math.min(d, daysIn(y, m))) }

    spacing: 4

    DateWheel {
        id: monthWheel
        model: 12
        Layout.preferredWidth: 130
        selected: Math.max(0, wheels.month - 1)
        label: index => Qt.locale().standaloneMonthName(index)
        onSettled: index => wheels.pick(wheels.year, index + 1, wheels.day)
    }
    DateWheel {
        id: dayWheel
        model: wheels.daysIn(wheels.year, wheels.month)
        Layout.preferredWidth: 60
        selected: Math.max(0, wheels.day - 1)
        label: index => index + 1
        onSettled: index => wheels.pick(wheels.year, wheels.month, index + 1)
    }
    DateWheel {
        id: yearWheel
        model: wheels.lastYear - wheels.firstYear + 1
        Layout.preferredWidth: 80
        selected: wheels.year - wheels.firstYear
        label: index => wheels.firstYear + index
        onSettled: index => wheels.pick(wheels.firstYear + index, wheels.month, wheels.day)
    }

    // One wheel of the three; a mouse wheel or touchpad turns it a step per notch.
    component DateWheel: Tumbler {
        id: wheel
        property var label
        property int selected
        property real pending: 0
        signal settled(int index)

        // The wheel follows the chosen date after a pick, whatever the user scrolled,
        // and keeps it when its length changes (the days of another month).
        currentIndex: selected
        onSelectedChanged: currentIndex = selected
        onCountChanged: currentIndex = selected

        visibleItemCount: 5
        delegate: Component {
            Label {
                required property int index
                text: wheel.label(index)
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                font.pixelSize: 18
                color: wheel.enabled ? Theme.ink : Theme.muted
                opacity: 1.0 - Math.abs(Tumbler.displacement) / (wheel.visibleItemCount / 2)
            }
        }
        onMovingChanged: if (!moving) settled(currentIndex)

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.NoButton
            onWheel: event => {
                wheel.pending += event.angleDelta.y !== 0 ? event.angleDelta.y : event.pixelDelta.y * 3
                const steps = Math.trunc(wheel.pending / 120)
                if (steps === 0)
                    return
                wheel.pending -= steps * 120
                const n = wheel.count
                wheel.currentIndex = ((wheel.currentIndex - steps) % n + n) % n
                wheel.settled(wheel.currentIndex)
            }
        }
    }
}
