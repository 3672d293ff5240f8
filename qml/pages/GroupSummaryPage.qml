import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// One group summary inside the "List By Group" tabs: the values with their
// counts as a list, or the same counts as a chart. The summary target picks
// the controller.
Item {
    id: summary
    required property AppDelegate appDelegate
    required property string summaryTarget
    property bool showChart: false
    readonly property GroupTableViewController ctl: makeController()

    signal openBreakdown(string target)

    function makeController() {
        const screens = {
            AuthorGroup: authorScreen, FormatGroup: formatScreen, GenreGroup: genreScreen,
            RatingGroup: ratingScreen, SeriesGroup: seriesScreen, YearGroup: yearScreen,
            DateReadGroup: dateReadScreen
        }
        const screen = screens[summary.summaryTarget] || authorScreen
        return screen.createObject(summary, { appDelegate: summary.appDelegate })
    }
    Component { id: authorScreen; AuthorGroupTableViewController {} }
    Component { id: formatScreen; FormatGroupTableViewController {} }
    Component { id: genreScreen; GenreGroupTableViewController {} }
    Component { id: ratingScreen; RatingGroupTableViewController {} }
    Component { id: seriesScreen; SeriesGroupTableViewController {} }
    Component { id: yearScreen; YearGroupTableViewController {} }
    Component { id: dateReadScreen; DateReadTableViewController {} }

    Component.onCompleted: ctl.viewDidLoad()
    Binding { target: summary.ctl; property: "chartShown"; value: summary.showChart }
    Connections {
        target: summary.ctl
        function onNavigate(target) { summary.openBreakdown(target) }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TextField {
            objectName: "searchBar"
            Layout.fillWidth: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            Layout.topMargin: 4
            placeholderText: summary.ctl.placeholder
            placeholderTextColor: Theme.muted
            text: summary.ctl.searchText
            onTextEdited: summary.ctl.searchText = text
            leftPadding: 36
            inputMethodHints: Qt.ImhNoPredictiveText
            Icon { name: "search"; size: 20; color: Theme.muted; x: 8; anchors.verticalCenter: parent.verticalCenter }
        }

        Label {
            objectName: "sectionHeader"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: summary.ctl.header
            font.bold: true
            color: Theme.muted
            topPadding: 2
            bottomPadding: 6
        }

        ListView {
            id: list
            objectName: "tableView"
            visible: !summary.showChart
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 6
            bottomMargin: 8
            model: summary.ctl.model
            reuseItems: true
            ScrollBar.vertical: ScrollBar {}

            delegate: ItemDelegate {
                id: row
                required property int index
                required property string value
                required property int count
                objectName: "Cell"
                x: 8
                width: ListView.view.width - 16
                height: summary.ctl.rowHeight
                background: RowFrame { color: row.down ? Qt.darker(Theme.rowBackground, 1.06) : Theme.rowBackground }
                onClicked: summary.ctl.selectRow(index)
                contentItem: RowLayout {
                    Label {
                        objectName: summary.ctl.valueLabel
                        Layout.fillWidth: true
                        text: row.value
                        elide: Text.ElideRight
                        font.pixelSize: 17
                        color: Theme.ink
                    }
                    Label {
                        objectName: "CountLabel"
                        text: row.count
                        font.pixelSize: 17
                        font.bold: true
                        color: Theme.ink
                    }
                }
            }
        }

        GroupChart {
            objectName: "chart"
            visible: summary.showChart
            Layout.fillWidth: true
            Layout.fillHeight: true
            bars: summary.ctl.chart
            most: summary.ctl.chartMax
            timeline: summary.ctl.timeline
            onPicked: value => summary.ctl.selectValue(value)
        }
    }
}
