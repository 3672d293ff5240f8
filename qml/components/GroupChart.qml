import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A summary's counts drawn: one horizontal bar per value, longest first, or a
// timeline with a column per year. Qt Charts' ChartView needs a widgets
// application, which this one is not, so the bars are plain items.
Item {
    id: chart
    property var bars: []
    property int most: 0
    property bool timeline: false
    signal picked(string value)

    ListView {
        id: barList
        objectName: "chartBars"
        visible: !chart.timeline
        anchors.fill: parent
        anchors.margins: 8
        clip: true
        spacing: 4
        model: chart.bars
        ScrollBar.vertical: ScrollBar {}
        delegate: ItemDelegate {
            id: bar
            required property var modelData
            width: ListView.view.width
            height: 30
            padding: 0
            enabled: !modelData.other
            onClicked: chart.picked(modelData.value)
            contentItem: RowLayout {
                spacing: 6
                Label {
                    Layout.preferredWidth: 120
                    text: bar.modelData.value
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignRight
                    color: Theme.ink
                    font.italic: bar.modelData.other
                }
                Item {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        height: 20
                        radius: 4
                        width: Math.max(2, (parent.width - 44) * bar.modelData.count / Math.max(1, chart.most))
                        color: bar.modelData.other ? Theme.muted : Theme.accent
                        Label {
                            x: parent.width + 4
                            anchors.verticalCenter: parent.verticalCenter
                            text: bar.modelData.count
                            color: Theme.ink
                            font.bold: true
                        }
                    }
                }
            }
        }
    }

    ListView {
        id: years
        objectName: "chartTimeline"
        visible: chart.timeline
        anchors.fill: parent
        anchors.margins: 8
        orientation: ListView.Horizontal
        clip: true
        spacing: 2
        model: chart.bars
        ScrollBar.horizontal: ScrollBar {}
        delegate: ItemDelegate {
            id: year
            required property var modelData
            width: 28
            height: ListView.view.height
            padding: 0
            enabled: !modelData.gap
            onClicked: chart.picked(modelData.value)
            background: null
            contentItem: Item {
                Label {
                    id: yearText
                    anchors.bottom: parent.bottom
                    anchors.horizontalCenter: parent.horizontalCenter
                    height: 44
                    text: year.modelData.value
                    font.pixelSize: 11
                    color: Theme.muted
                    rotation: -90
                    verticalAlignment: Text.AlignVCenter
                }
                Rectangle {
                    id: column
                    anchors.bottom: yearText.top
                    anchors.bottomMargin: 4
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: 18
                    radius: 3
                    color: Theme.accent
                    visible: !year.modelData.gap
                    height: Math.max(2, (parent.height - 70) * year.modelData.count / Math.max(1, chart.most))
                }
                Label {
                    visible: !year.modelData.gap
                    anchors.bottom: column.top
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: year.modelData.count
                    font.pixelSize: 11
                    color: Theme.ink
                }
            }
        }
    }

    Label {
        anchors.centerIn: parent
        visible: chart.bars.length === 0
        text: "No books to chart"
        color: Theme.muted
    }
}
