import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// The add and edit screens of the three lists: one text field and a save
// action; the navigation target picks the controller.
ScreenPage {
    id: page
    property var passedEntryName
    readonly property ScreenController ctl: makeController()

    function makeController() {
        const screens = {
            AddGenre: addGenre, AddRating: addRating, AddNewSeries: addSeries,
            EditGenre: editGenre, EditRating: editRating, EditNewSeries: editSeries
        }
        const screen = screens[page.pageTarget] || addGenre
        return screen.createObject(page, { appDelegate: page.appDelegate })
    }
    Component { id: addGenre; AddGenreViewController {} }
    Component { id: addRating; AddRatingViewController {} }
    Component { id: addSeries; AddNewSeriesViewController {} }
    Component { id: editGenre; EditGenreViewController {} }
    Component { id: editRating; EditRatingViewController {} }
    Component { id: editSeries; EditNewSeriesViewController {} }

    title: ctl.title
    Component.onCompleted: {
        if (page.pageTarget.startsWith("Edit"))
            page.ctl.passedEntryName = page.passedEntryName
        page.ctl.viewDidLoad()
        field.text = page.ctl.text
    }
    // The name is the only thing to type here: the keyboard goes straight to it.
    StackView.onActivated: field.forceActiveFocus()

    Connections {
        target: page.ctl
        function onUnwind(name) { page.unwind(name) }
        function onTextChanged() {
            if (field.text !== page.ctl.text)
                field.text = page.ctl.text
        }
    }

    barActions: Component {
        ToolButton {
            objectName: "SaveButton"
            contentItem: Label {
                text: "Save"
                color: "white"
                font.pixelSize: 17
                font.bold: true
                verticalAlignment: Text.AlignVCenter
            }
            onClicked: {
                page.ctl.text = field.text
                page.ctl.save()
            }
        }
    }

    // A tap anywhere else ends editing.
    MouseArea {
        anchors.fill: parent
        onClicked: page.forceActiveFocus()
    }

    ColumnLayout {
        x: Theme.margin
        y: Theme.margin * 1.5
        width: parent.width - 2 * Theme.margin
        spacing: 8

        TextField {
            id: field
            objectName: page.ctl.textFieldName
            Layout.fillWidth: true
            font.pixelSize: 18
            focus: true
            placeholderText: "Name"
            placeholderTextColor: Theme.muted
            onTextEdited: page.ctl.text = text
            background: Rectangle {
                implicitHeight: 48
                radius: 5
                border.width: field.activeFocus ? 2 : 1
                border.color: field.activeFocus ? Theme.primary : Theme.muted
                color: "white"
            }
            leftPadding: 12
            rightPadding: 12
        }
    }

    AlertHost { controller: page.ctl }
}
