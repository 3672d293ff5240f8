import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
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
    StackView.onDeactivating: ctl.viewWillDisappear()

    Connections {
        target: page.ctl
        function onNavigate(target) { page.openPage(target) }
        function onRowDeleted(name) { page.offerUndo(name, () => page.ctl.undoDelete()) }
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
            // Printing and sharing need books to show.
            ToolButton {
                objectName: "PrintButton"
                enabled: page.ctl.canShare && !page.ctl.busy
                contentItem: Icon { name: "print"; color: "white"; opacity: parent.enabled ? 1 : 0.4 }
                onClicked: page.ctl.PrintButtonTapped()
                Accessible.name: "Print"
            }
            ToolButton {
                id: shareButton
                objectName: "ShareButton"
                enabled: page.ctl.canShare && !page.ctl.busy
                contentItem: Icon { name: "share"; color: "white"; opacity: parent.enabled ? 1 : 0.4 }
                onClicked: shareMenu.open()
                Accessible.name: "Share"
                Menu {
                    id: shareMenu
                    objectName: "shareMenu"
                    y: shareButton.height
                    x: shareButton.width - width
                    background: Rectangle {
                        implicitWidth: 200
                        color: "white"
                        radius: 4
                        border.color: "#d0ccc8"
                    }
                    MenuItem { objectName: "sharePdf"; text: "Share PDF List"; onTriggered: page.ctl.ShareButtonTapped() }
                    MenuItem { objectName: "shareMessage"; text: "Text Message"; onTriggered: page.ctl.TextMessageButtonTapped() }
                    MenuItem {
                        objectName: "shareMail"
                        text: "Mail"
                        visible: page.ctl.offersMail
                        height: visible ? implicitHeight : 0
                        onTriggered: page.ctl.MailButtonTapped()
                    }
                }
            }
        }
    }

    // The desktop's share sheet for the PDF list: open it or save a copy.
    Connections {
        target: page.appDelegate.platform
        function onShareRequested(text, image, files) {
            if (files.length > 0 && page.StackView.status === StackView.Active) {
                fileSheet.file = files[0]
                fileSheet.open()
            }
        }
    }
    Dialog {
        id: fileSheet
        property url file
        property bool chosen: false
        objectName: "fileSheet"
        modal: true
        title: "Share"
        anchors.centerIn: Overlay.overlay
        width: page.width - 32
        onAboutToShow: chosen = false
        onClosed: if (!chosen) page.ctl.shareCompleted("", false)
        contentItem: Label {
            text: fileSheet.file.toString().split("/").pop()
            wrapMode: Text.WrapAnywhere
        }
        footer: DialogButtonBox {
            Button {
                objectName: "fileOpenButton"
                text: "Open"
                flat: true
                onClicked: {
                    fileSheet.chosen = true
                    Qt.openUrlExternally(fileSheet.file)
                    page.ctl.shareCompleted("Open", true)
                    fileSheet.close()
                }
            }
            Button {
                objectName: "fileSaveButton"
                text: "Save As…"
                flat: true
                onClicked: {
                    fileSheet.chosen = true
                    saveDialog.selectedFile = fileSheet.file
                    fileSheet.close()
                    saveDialog.open()
                }
            }
            Button { text: "Close"; flat: true; DialogButtonBox.buttonRole: DialogButtonBox.RejectRole }
        }
    }
    FileDialog {
        id: saveDialog
        objectName: "saveDialog"
        title: "Save PDF List"
        fileMode: FileDialog.SaveFile
        nameFilters: ["PDF files (*.pdf)"]
        onAccepted: {
            if (page.ctl.saveCopy(fileSheet.file, selectedFile))
                page.ctl.shareCompleted("SaveToFiles", true)
        }
        onRejected: page.ctl.shareCompleted("", false)
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            visible: page.ctl.busy
            spacing: 0
            ProgressBar {
                objectName: "pdfProgress"
                Layout.fillWidth: true
                value: page.ctl.progress
            }
            Label {
                objectName: "pdfProgressText"
                Layout.alignment: Qt.AlignHCenter
                text: page.ctl.progressText
                color: Theme.muted
                font.pixelSize: 12
            }
        }

        TextField {
            objectName: "searchBar"
            Layout.fillWidth: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            Layout.topMargin: 4
            placeholderText: page.ctl.placeholder
            placeholderTextColor: Theme.muted
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

            delegate: SwipeRow {
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
                onTapped: page.ctl.selectRow(index)
                onDeleteRequested: page.ctl.deleteRow(index)
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
                                textFormat: Text.PlainText // a "<b>" in a title is the title's own
                                color: Theme.ink
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
