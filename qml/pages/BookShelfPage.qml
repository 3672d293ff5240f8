import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise
import "../components"

// The other book lists: A-Z with sections and an index, pictures, a cover grid.
ScreenPage {
    id: page
    title: ctl.title
    property alias controller: ctl
    property string initialMode: ""
    unwindTargets: ["unwindToList"]
    onUnwound: name => ctl.unwindToList()

    BookShelfViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
        onRowDeleted: name => page.offerUndo(name, () => ctl.undoDelete())
    }
    Component.onCompleted: {
        const last = ctl.lastPresentation()
        ctl.mode = page.initialMode !== "" ? page.initialMode : (last === "cards" ? "az" : last)
        ctl.viewDidLoad()
    }
    StackView.onActivating: ctl.viewWillAppear()

    function choose(presentation) {
        const target = ctl.choosePresentation(presentation)
        if (target !== "BookShelf")
            page.StackView.view.replace(Pages.url(target), { appDelegate: page.appDelegate, pageTarget: target })
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
            current: ctl.mode
            onChosen: key => page.choose(key)
        }

        TextField {
            objectName: "searchBar"
            Layout.fillWidth: true
            Layout.margins: 8
            placeholderText: "Search Title or Author"
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

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            // A-Z and pictures: one row per book.
            ListView {
                id: list
                objectName: "bookList"
                anchors.fill: parent
                anchors.rightMargin: ctl.mode === "az" ? 22 : 0
                visible: ctl.mode !== "grid"
                clip: true
                model: visible ? ctl.model : null
                reuseItems: true
                cacheBuffer: 600
                ScrollBar.vertical: ScrollBar { visible: ctl.mode !== "az" }
                section.property: ctl.mode === "az" ? "section" : ""
                section.criteria: ViewSection.FullString
                section.labelPositioning: ViewSection.InlineLabels | ViewSection.CurrentLabelAtStart
                section.delegate: Rectangle {
                    required property string section
                    width: ListView.view.width
                    height: 28
                    color: Qt.darker(Theme.paper, 1.05)
                    Label {
                        text: section
                        x: 16
                        anchors.verticalCenter: parent.verticalCenter
                        font.bold: true
                        font.pixelSize: 15
                        color: Theme.accent
                    }
                }
                delegate: SwipeRow {
                    id: row
                    required property int index
                    required property string title
                    required property string author
                    required property string stars
                    required property string dateText
                    required property string coverSource
                    readonly property bool pictures: ctl.mode === "pictures"
                    width: ListView.view.width
                    height: pictures ? 132 : 58
                    padding: 0
                    onTapped: ctl.selectRow(index)
                    onDeleteRequested: ctl.deleteRow(index)
                    background: Rectangle {
                        color: row.down ? Qt.darker(Theme.paper, 1.08) : Theme.paper
                        Rectangle {
                            anchors.bottom: parent.bottom
                            x: row.pictures ? 108 : 16
                            width: parent.width - x
                            height: 1
                            color: Qt.darker(Theme.paper, 1.12)
                        }
                    }
                    contentItem: RowLayout {
                        spacing: 12
                        Item { Layout.preferredWidth: 4 }
                        CoverThumb {
                            visible: row.pictures
                            Layout.preferredWidth: 80
                            Layout.preferredHeight: 116
                            source: row.coverSource
                            title: row.title
                        }
                        ColumnLayout {
                            Layout.fillWidth: true
                            Layout.rightMargin: 12
                            spacing: 2
                            Label {
                                Layout.fillWidth: true
                                text: row.title
                                font.pixelSize: row.pictures ? 17 : 16
                                font.bold: row.pictures
                                color: Theme.ink
                                elide: Text.ElideRight
                                maximumLineCount: 2
                                wrapMode: row.pictures ? Text.Wrap : Text.NoWrap
                            }
                            Label {
                                Layout.fillWidth: true
                                text: row.author
                                font.pixelSize: 13
                                color: Theme.muted
                                elide: Text.ElideRight
                            }
                            Label {
                                visible: row.pictures
                                text: row.stars
                                font.pixelSize: 16
                                color: "#e0a100"
                            }
                            Label {
                                visible: row.pictures && row.dateText !== ""
                                text: "Read " + row.dateText
                                font.pixelSize: 12
                                color: Theme.muted
                            }
                        }
                    }
                }
            }

            // The section index down the right edge: tap or drag to a letter.
            Item {
                id: sectionIndex
                objectName: "sectionIndex"
                visible: ctl.mode === "az"
                anchors.right: parent.right
                anchors.rightMargin: 2
                anchors.verticalCenter: parent.verticalCenter
                width: 20
                height: letters.height
                readonly property real letterHeight: Math.min(18, (parent.height - 8) / Math.max(1, ctl.alphabet.length))
                property string active: ""
                Column {
                    id: letters
                    Repeater {
                        model: ctl.alphabet
                        Label {
                            required property string modelData
                            width: 20
                            height: sectionIndex.letterHeight
                            text: modelData
                            horizontalAlignment: Text.AlignHCenter
                            verticalAlignment: Text.AlignVCenter
                            font.pixelSize: Math.min(12, sectionIndex.letterHeight - 1)
                            font.bold: true
                            color: sectionIndex.active === modelData ? Theme.ink : Theme.accent
                        }
                    }
                }
                function jump(y) {
                    const i = Math.max(0, Math.min(ctl.alphabet.length - 1, Math.floor(y / letterHeight)))
                    const letter = ctl.alphabet[i]
                    if (letter === active)
                        return
                    active = letter
                    const target = ctl.rowOfLetter(letter)
                    if (target >= 0)
                        list.positionViewAtIndex(target, ListView.Beginning)
                }
                MouseArea {
                    anchors.fill: parent
                    anchors.leftMargin: -6
                    anchors.rightMargin: -2
                    preventStealing: true
                    onPressed: mouse => sectionIndex.jump(mouse.y)
                    onPositionChanged: mouse => sectionIndex.jump(mouse.y)
                    onReleased: sectionIndex.active = ""
                }
            }

            // The letter being jumped to, large in the middle, as phones show it.
            Rectangle {
                visible: sectionIndex.active !== ""
                anchors.centerIn: parent
                width: 72; height: 72; radius: 14
                color: "#cc3b2f2a"
                Label { anchors.centerIn: parent; text: sectionIndex.active; color: "white"; font.pixelSize: 36; font.bold: true }
            }

            // The grid: covers only, three a row on a phone, more on a wider window.
            GridView {
                id: grid
                objectName: "bookGrid"
                anchors.fill: parent
                anchors.leftMargin: 6
                visible: ctl.mode === "grid"
                clip: true
                model: visible ? ctl.model : null
                reuseItems: true
                cacheBuffer: 600
                readonly property int columns: Math.max(3, Math.floor(width / 125))
                cellWidth: Math.floor((width - 1) / columns)
                cellHeight: Math.round(cellWidth * 1.45) + 40
                ScrollBar.vertical: ScrollBar {}
                delegate: Control {
                    id: cell
                    required property int index
                    required property string title
                    required property string coverSource
                    width: grid.cellWidth
                    height: grid.cellHeight
                    padding: 5
                    // A cover has no room to swipe: a long press or a right click offers delete.
                    // Taps are told apart by button here, as a button control would also
                    // take a right click for a tap.
                    TapHandler {
                        acceptedButtons: Qt.LeftButton
                        onTapped: ctl.selectRow(cell.index)
                        onLongPressed: cellMenu.popup(cell, point.position.x, point.position.y)
                    }
                    TapHandler {
                        acceptedButtons: Qt.RightButton
                        onTapped: eventPoint => cellMenu.popup(cell, eventPoint.position.x, eventPoint.position.y)
                    }
                    Menu {
                        id: cellMenu
                        objectName: "cellMenu"
                        MenuItem { objectName: "cellMenuDelete"; text: "delete"; onTriggered: ctl.deleteRow(cell.index) }
                    }
                    contentItem: ColumnLayout {
                        spacing: 4
                        CoverThumb {
                            Layout.fillWidth: true
                            Layout.preferredHeight: Math.round(width * 1.45)
                            source: cell.coverSource
                            title: cell.title
                        }
                        Label {
                            Layout.fillWidth: true
                            text: cell.title
                            font.pixelSize: 12
                            color: Theme.ink
                            horizontalAlignment: Text.AlignHCenter
                            elide: Text.ElideRight
                            maximumLineCount: 2
                            wrapMode: Text.Wrap
                        }
                    }
                }
            }

            Label {
                anchors.centerIn: parent
                visible: ctl.model.count === 0
                text: ctl.searchText === "" ? "No books yet" : "No books match"
                color: Theme.muted
                font.pixelSize: 16
            }
        }
    }
}
