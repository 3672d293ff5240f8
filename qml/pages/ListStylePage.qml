import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title
    property alias controller: ctl
    unwindTargets: ["unwindToList"]
    onUnwound: name => ctl.unwindToList()

    ListStyleTableViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
        onRowDeleted: name => page.offerUndo(name, () => ctl.undoDelete())
    }
    Component.onCompleted: {
        ctl.DarkMode = page.Material.theme === Material.Dark
        ctl.viewDidLoad()
    }
    StackView.onActivating: ctl.viewWillAppear()

    barActions: Component {
        RowLayout {
            spacing: 0
            ToolButton {
                objectName: "SortButton"
                contentItem: Icon { name: "swap_vert"; color: "white" }
                onClicked: ctl.SortButtonTapped()
                Accessible.name: "Sort"
            }
            ToolButton {
                id: menuButton
                objectName: "SortMenuButton"
                contentItem: Icon { name: "more_horiz"; color: "white" }
                onClicked: sortMenu.open()
                Accessible.name: "Sort By"
                Menu {
                    id: sortMenu
                    objectName: "sortMenu"
                    title: "Sort By"
                    y: menuButton.height
                    MenuItem { text: "Sort By"; enabled: false }
                    Repeater {
                        model: ctl.sortOptions
                        MenuItem {
                            required property string modelData
                            required property int index
                            text: modelData
                            onTriggered: ctl.selectSortOption(index + 1)
                        }
                    }
                }
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        BookListSwitcher {
            objectName: "listSwitcher"
            Layout.fillWidth: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            Layout.topMargin: 8
            current: "cards"
            onChosen: key => {
                const target = ctl.choosePresentation(key)
                if (target !== page.pageTarget)
                    page.StackView.view.replace(Pages.url(target), { appDelegate: page.appDelegate, pageTarget: target,
                                                                    initialMode: key })
            }
        }

        TextField {
            objectName: "searchBar"
            Layout.fillWidth: true
            Layout.margins: 8
            placeholderText: ctl.placeholder
            placeholderTextColor: Theme.muted
            text: ctl.searchText
            onTextEdited: ctl.searchText = text
            leftPadding: 36
            Icon { name: "search"; size: 20; color: Theme.muted; x: 8; anchors.verticalCenter: parent.verticalCenter }
        }

        Label {
            objectName: "sectionHeader"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: ctl.header
            font.bold: true
            color: Theme.muted
            bottomPadding: 4
        }

        ListView {
            id: list
            objectName: "bookList"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 8
            model: ctl.model
            reuseItems: true
            cacheBuffer: 400
            ScrollBar.vertical: ScrollBar {}

            delegate: SwipeRow {
                id: card
                required property int index
                required property var model
                readonly property string coverSource: model.coverSource
                readonly property color labelColor: ctl.DarkMode ? "black" : Theme.ink

                width: ListView.view.width - 16
                x: 8
                padding: 8
                onTapped: ctl.selectRow(index)
                onDeleteRequested: ctl.deleteRow(index)
                background: RowFrame {}
                contentItem: RowLayout {
                    spacing: 10
                    Item {
                        Layout.preferredWidth: 62
                        Layout.preferredHeight: 90
                        Layout.alignment: Qt.AlignTop
                        Image {
                            anchors.fill: parent
                            source: card.coverSource
                            sourceSize: Qt.size(124, 180)
                            fillMode: Image.PreserveAspectFit
                            asynchronous: true
                        }
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 1
                        Repeater {
                            model: [card.model.TopLabel, card.model.MiddleLabel, card.model.BottomLabel,
                                    card.model.RatingLabel, card.model.SeriesLabel, card.model.NotesLabel]
                            Label {
                                required property string modelData
                                required property int index
                                Layout.fillWidth: true
                                text: modelData
                                color: card.labelColor
                                // Long notes wrap once and end in an ellipsis inside the card.
                                wrapMode: index === 5 ? Text.Wrap : Text.NoWrap
                                maximumLineCount: index === 5 ? 2 : 1
                                elide: Text.ElideRight
                                font.pixelSize: index === 0 ? 15 : 13
                                font.bold: index === 0
                            }
                        }
                    }
                }
            }
        }
    }
}
