import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// One breakdown screen for the seven groupings; the navigation target picks
// the controller.
ScreenPage {
    id: page
    readonly property GroupBreakdownTableViewController ctl: makeController()
    property alias controller: page.ctl

    function makeController() {
        const screens = {
            AuthorBreakdown: authorScreen, FormatBreakdown: formatScreen, GenreBreakdown: genreScreen,
            RatingBreakdown: ratingScreen, SeriesBreakdown: seriesScreen, YearBreakdown: yearScreen,
            DateReadBreakdown: dateReadScreen
        }
        const screen = screens[page.pageTarget] || ratingScreen
        return screen.createObject(page, { appDelegate: page.appDelegate })
    }
    Component { id: authorScreen; AuthorBreakdownTableViewController {} }
    Component { id: formatScreen; FormatBreakdownTableViewController {} }
    Component { id: genreScreen; GenreBreakdownTableViewController {} }
    Component { id: ratingScreen; RatingBreakdownTableViewController {} }
    Component { id: seriesScreen; SeriesBreakdownTableViewController {} }
    Component { id: yearScreen; YearBreakdownTableViewController {} }
    Component { id: dateReadScreen; DateReadGroupTableViewController {} }

    title: ctl.title
    // Back from the detail screen; showing the page again does the fetch.
    unwindTargets: ["unwindToList", ctl.unwindName]
    Component.onCompleted: ctl.viewDidLoad()
    StackView.onActivating: ctl.viewWillAppear()

    Connections {
        target: page.ctl
        function onNavigate(target) { page.openPage(target) }
    }

    barActions: Component {
        RowLayout {
            spacing: 0
            ToolButton {
                objectName: "SortButton"
                contentItem: Icon { name: "swap_vert"; color: "white" }
                onClicked: page.ctl.SortButtonTapped()
                Accessible.name: "Sort"
            }
            ToolButton {
                id: menuButton
                objectName: "SortMenuButton"
                text: "Sort by"
                contentItem: RowLayout {
                    spacing: 2
                    Icon { name: "sort"; color: "white" }
                    Label { text: menuButton.text; color: "white" }
                }
                onClicked: sortMenu.open()
                Accessible.name: "Sort by"
                Menu {
                    id: sortMenu
                    objectName: "sortMenu"
                    title: "..."
                    y: menuButton.height
                    background: Rectangle {
                        implicitWidth: 200
                        color: "white"
                        radius: 4
                        border.color: "#d0ccc8"
                    }
                    MenuItem { objectName: "sortMenuTitle"; text: sortMenu.title; enabled: false }
                    Repeater {
                        model: page.ctl.sortActions
                        MenuItem {
                            required property string modelData
                            required property int index
                            objectName: "sortAction" + (index + 1)
                            text: modelData
                            onTriggered: page.ctl.selectSortOption(index + 1)
                        }
                    }
                }
            }
            ToolButton {
                objectName: "PrintButton"
                contentItem: Icon { name: "print"; color: "white" }
                onClicked: page.ctl.PrintButtonTapped()
                Accessible.name: "Print"
            }
            ToolButton {
                objectName: "ShareButton"
                contentItem: Icon { name: "share"; color: "white" }
                onClicked: page.ctl.ShareButtonTapped()
                Accessible.name: "Share"
            }
        }
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
            placeholderText: page.ctl.placeholder
            text: page.ctl.searchText
            onTextEdited: page.ctl.searchText = text
            leftPadding: 36
            inputMethodHints: Qt.ImhNoPredictiveText
            Icon { name: "search"; size: 20; color: Theme.muted; x: 8; anchors.verticalCenter: parent.verticalCenter }
        }

        Label {
            objectName: "sectionHeader"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: page.ctl.header
            font.bold: true
            color: Theme.muted
            topPadding: 2
            bottomPadding: 6
        }

        ListView {
            id: list
            objectName: "tableView"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 8
            bottomMargin: 8
            model: page.ctl.model
            reuseItems: true
            cacheBuffer: 400
            ScrollBar.vertical: ScrollBar {}

            delegate: SwipeDelegate {
                id: row
                required property int index
                required property string coverSource
                required property var labels
                objectName: "Cell"
                x: 8
                width: ListView.view.width - 16
                height: page.ctl.rowHeight
                padding: 8
                background: RowFrame { color: row.down ? Qt.darker(Theme.rowBackground, 1.06) : Theme.rowBackground }
                onClicked: {
                    if (swipe.position === 0)
                        page.ctl.selectRow(index)
                }
                contentItem: RowLayout {
                    spacing: 10
                    Item {
                        Layout.preferredWidth: 68
                        Layout.fillHeight: true
                        Image {
                            anchors.fill: parent
                            source: row.coverSource
                            sourceSize: Qt.size(136, 200)
                            fillMode: Image.PreserveAspectFit
                            asynchronous: false // the store is read on this thread only
                        }
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        Layout.alignment: Qt.AlignVCenter
                        spacing: 1
                        Repeater {
                            model: row.labels
                            Label {
                                required property string modelData
                                required property int index
                                objectName: page.ctl.labelOutlets[index]
                                Layout.fillWidth: true
                                text: modelData
                                color: Theme.ink
                                elide: Text.ElideRight
                                font.pixelSize: index === 0 ? 15 : 13
                                font.bold: index === 0
                            }
                        }
                    }
                }
                swipe.right: Rectangle {
                    objectName: "deleteAction"
                    width: 96
                    height: row.height
                    anchors.right: parent.right
                    radius: Theme.rowRadius
                    color: Theme.accent
                    Label {
                        anchors.centerIn: parent
                        text: "delete"
                        color: "white"
                        font.pixelSize: 16
                    }
                    // The delegate keeps the press; its swipe items hear a click this way.
                    SwipeDelegate.onClicked: page.ctl.deleteRow(row.index)
                }
            }
        }
    }
}
