import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// One list screen for the genre, rating and series lists; the navigation
// target picks the controller.
ScreenPage {
    id: page
    readonly property ReferenceTableController ctl: makeController()

    function makeController() {
        const screens = {
            GenreReferenceList: genreScreen,
            RatingReferenceList: ratingScreen,
            SeriesReferenceList: seriesScreen
        }
        const screen = screens[page.pageTarget] || genreScreen
        return screen.createObject(page, { appDelegate: page.appDelegate })
    }
    Component { id: genreScreen; GenreReferenceListTableViewController {} }
    Component { id: ratingScreen; RatingReferenceListTableViewController {} }
    Component { id: seriesScreen; SeriesReferenceListTableViewController {} }

    title: ctl.title
    unwindTargets: [ctl.unwindName]
    onUnwound: ctl.unwindToTableView()
    Component.onCompleted: ctl.viewDidLoad()
    StackView.onDeactivating: ctl.viewWillDisappear()

    Connections {
        target: page.ctl
        function onRowDeleted(name) {
            page.offerUndo(name, () => page.ctl.undoDelete())
        }
        function onNavigate(target) {
            page.openPage(target, { passedEntryName: page.ctl.passedEntryName })
        }
        function onSearchTextChanged() {
            if (searchField.text !== page.ctl.searchText)
                searchField.text = page.ctl.searchText
        }
    }

    barActions: Component {
        RowLayout {
            spacing: 0
            ToolButton {
                objectName: "SortButton"
                visible: page.ctl.searchable
                contentItem: Icon { name: "swap_vert"; color: "white"; size: 24 }
                onClicked: page.ctl.SortButtonTapped()
                Accessible.name: "Sort"
            }
            ToolButton {
                objectName: "AddButton"
                contentItem: Icon { name: "add"; color: "white"; size: 26 }
                onClicked: page.openPage(page.ctl.addTarget)
                Accessible.name: "Add"
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TextField {
            id: searchField
            objectName: "searchBar"
            visible: page.ctl.searchable
            Layout.fillWidth: true
            Layout.leftMargin: Theme.margin
            Layout.rightMargin: Theme.margin
            Layout.topMargin: 6
            placeholderText: page.ctl.searchPlaceholder
            placeholderTextColor: Theme.muted
            leftPadding: 36
            inputMethodHints: Qt.ImhNoPredictiveText
            onTextEdited: page.ctl.searchText = text
            Icon {
                name: "search"
                color: Theme.muted
                size: 20
                anchors.verticalCenter: parent.verticalCenter
                x: 8
            }
        }

        ListView {
            id: list
            objectName: "tableView"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 8
            topMargin: 10
            bottomMargin: 10
            model: page.ctl.rows

            delegate: SwipeRow {
                id: row
                required property var model
                required property int index
                objectName: "Cell"
                x: Theme.margin
                width: ListView.view.width - 2 * Theme.margin
                height: 50
                text: row.model[page.ctl.attribute] === undefined ? "" : row.model[page.ctl.attribute]
                font.pixelSize: 17
                background: RowFrame {
                    color: row.down ? Qt.darker(Theme.rowBackground, 1.06) : Theme.rowBackground
                }
                onTapped: page.ctl.didSelectRow(index)
                onDeleteRequested: page.ctl.deleteRow(index)
            }

            Label {
                anchors.centerIn: parent
                visible: list.count === 0
                text: "No entries"
                color: Theme.muted
            }
        }
    }
}
