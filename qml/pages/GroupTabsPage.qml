import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// "List By Group": the seven summaries as tabs. The menu's navigation bar is
// hidden here; the tabs carry their own bar with the way back to the menu.
ScreenPage {
    id: page
    title: "List By Group"
    navigationBarHidden: true
    readonly property var summaries: [
        { target: "AuthorGroup", title: "Author", icon: "person" },
        { target: "FormatGroup", title: "Format", icon: "menu_book" },
        { target: "GenreGroup", title: "Genre", icon: "category" },
        { target: "RatingGroup", title: "Rating", icon: "star_rate" },
        { target: "SeriesGroup", title: "Series", icon: "collections_bookmark" },
        { target: "YearGroup", title: "Year\nPublished", icon: "history_edu" },
        { target: "DateReadGroup", title: "Year\nRead", icon: "event" }
    ]
    property Item current: null
    // A summary that was already loaded counts its rows afresh when shown again.
    function showCurrent(appearing) {
        const loader = tabs.itemAt(tabBar.currentIndex)
        page.current = loader ? loader.item : null
        if (page.current && appearing)
            page.current.ctl.viewWillAppear()
    }
    property alias tabBar: tabBar

    StackView.onActivating: showCurrent(true)

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ToolBar {
            Layout.fillWidth: true
            implicitHeight: 52
            background: Rectangle { color: Theme.primary }
            RowLayout {
                anchors.fill: parent
                spacing: 0
                ToolButton {
                    objectName: "menuButton"
                    contentItem: Icon { name: "arrow_back_ios"; color: "white"; size: 22 }
                    onClicked: page.goBack()
                    Accessible.name: "Menu"
                }
                Label {
                    objectName: "tabTitle"
                    Layout.fillWidth: true
                    text: page.current ? page.current.ctl.tabTitle : ""
                    color: "white"
                    font.pixelSize: 19
                    font.bold: true
                    elide: Text.ElideRight
                }
                ToolButton {
                    objectName: "chartButton"
                    contentItem: Icon {
                        name: page.current && page.current.showChart ? "list" : "bar_chart"
                        color: "white"
                    }
                    onClicked: page.current.showChart = !page.current.showChart
                    Accessible.name: page.current && page.current.showChart ? "List" : "Chart"
                }
                ToolButton {
                    objectName: "SortButton"
                    contentItem: Icon { name: "swap_vert"; color: "white" }
                    onClicked: page.current.ctl.SortButtonTapped()
                    Accessible.name: "Sort"
                }
            }
        }

        StackLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            currentIndex: tabBar.currentIndex
            Repeater {
                id: tabs
                model: page.summaries
                Loader {
                    required property var modelData
                    required property int index
                    // A summary loads when its tab is first chosen.
                    active: tabBar.currentIndex === index || item !== null
                    onLoaded: if (index === tabBar.currentIndex) page.showCurrent(false)
                    sourceComponent: GroupSummaryPage {
                        appDelegate: page.appDelegate
                        summaryTarget: modelData.target
                        onOpenBreakdown: target => page.openPage(target)
                    }
                }
            }
        }

        TabBar {
            id: tabBar
            objectName: "tabBar"
            Layout.fillWidth: true
            position: TabBar.Footer
            onCurrentIndexChanged: page.showCurrent(true)
            Repeater {
                model: page.summaries
                TabButton {
                    required property var modelData
                    objectName: "tab_" + modelData.target
                    // All seven fit a phone's width; the two year tabs take two lines.
                    width: Math.max(implicitWidth, page.width / page.summaries.length)
                    leftPadding: 2
                    rightPadding: 2
                    text: modelData.title
                    display: AbstractButton.TextUnderIcon
                    icon.source: ""
                    font.capitalization: Font.MixedCase
                    contentItem: ColumnLayout {
                        spacing: 0
                        Icon {
                            Layout.alignment: Qt.AlignHCenter
                            name: modelData.icon
                            size: 22
                            color: parent.parent.checked ? Theme.accent : Theme.muted
                        }
                        Label {
                            Layout.alignment: Qt.AlignHCenter
                            text: modelData.title
                            horizontalAlignment: Text.AlignHCenter
                            lineHeight: 0.85
                            font.pixelSize: 11
                            color: parent.parent.checked ? Theme.accent : Theme.muted
                        }
                    }
                }
            }
        }
    }
}
