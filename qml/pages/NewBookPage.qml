import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Dialogs
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title
    property alias controller: ctl

    NewBookViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
        onUnwind: name => page.unwind(name)
        onDocumentPickerRequested: fileDialog.open()
        onCameraRequested: camera.active = true
    }
    Component.onCompleted: ctl.viewDidLoad()
    StackView.onActivating: ctl.viewWillAppear()

    barActions: Component {
        ToolButton {
            objectName: "saveButton"
            text: "Save"
            font.bold: true
            Material.foreground: "white"
            onClicked: ctl.SaveNewBook()
        }
    }

    component CoverButton: Button {
        property string iconName
        Layout.fillWidth: true
        Layout.preferredWidth: 1 // equal shares of the row
        implicitHeight: 56
        padding: 2
        background: Rectangle {
            radius: 8
            border.width: 1
            border.color: "#8a817c"
            color: parent.down ? "#e7e1da" : "white"
            opacity: parent.enabled ? 1 : 0.4
        }
        contentItem: ColumnLayout {
            spacing: 0
            Icon { name: parent.parent.iconName; size: 22; color: Theme.primary; Layout.alignment: Qt.AlignHCenter }
            Label { text: parent.parent.text; font.pixelSize: 12; Layout.alignment: Qt.AlignHCenter }
        }
    }

    component ReferenceButton: ToolButton {
        Layout.alignment: Qt.AlignBottom
        contentItem: Icon { name: "playlist_add"; color: Theme.primary }
    }

    Flickable {
        id: flick
        objectName: "formFlickable"
        anchors.fill: parent
        contentHeight: form.implicitHeight + 2 * Theme.margin
        clip: true
        ScrollIndicator.vertical: ScrollIndicator {}

        ColumnLayout {
            id: form
            x: Theme.margin
            y: Theme.margin
            width: flick.width - 2 * Theme.margin
            spacing: 8

            DateField {
                objectName: "dateTextField"
                label: "Date Read"
                form: ctl
            }
            FormField {
                objectName: "bookNameTextField"
                label: "Book Name"
                mandatory: true
                text: ctl.bookNameTextField
                onEdited: text => ctl.bookNameTextField = text
            }
            FormField {
                objectName: "SubTitleTextField"
                label: "Subtitle"
                text: ctl.SubTitleTextField
                onEdited: text => ctl.SubTitleTextField = text
            }
            FormField {
                objectName: "bookAuthorTextField"
                label: "Author"
                mandatory: true
                text: ctl.bookAuthorTextField
                onEdited: text => ctl.bookAuthorTextField = text
            }
            FormField {
                objectName: "publishersNameTextField"
                label: "Publisher"
                text: ctl.publishersNameTextField
                onEdited: text => ctl.publishersNameTextField = text
            }
            RowLayout {
                spacing: 8
                FormField {
                    objectName: "datePublishedTextField"
                    label: "Year Published"
                    checker: ctl
                    text: ctl.datePublishedTextField
                    onEdited: text => ctl.datePublishedTextField = text
                }
                FormField {
                    objectName: "numberOfPagesTextField"
                    label: "# Pages"
                    checker: ctl
                    text: ctl.numberOfPagesTextField
                    onEdited: text => ctl.numberOfPagesTextField = text
                }
            }
            FormField {
                objectName: "ISBNTextField"
                label: "ISBN"
                text: ctl.ISBNTextField
                onEdited: text => ctl.ISBNTextField = text
            }
            RowLayout {
                spacing: 4
                PickerField {
                    objectName: "bookCategoryTextField"
                    label: "Genre"
                    text: ctl.bookCategoryTextField
                    rows: ctl.ListOfGenre
                    onPicked: row => ctl.didSelectRow(BookForm.GenrePicker, row)
                }
                ReferenceButton {
                    objectName: "GenreReferenceListButton"
                    onClicked: ctl.openViewControllerBasedOnIdentifier("GenreReferenceList")
                }
            }
            RowLayout {
                spacing: 8
                PickerField {
                    objectName: "RatingTextField"
                    label: "Rating"
                    text: ctl.RatingTextField
                    rows: ctl.ListOfRating
                    onPicked: row => ctl.didSelectRow(BookForm.RatingPicker, row)
                }
                PickerField {
                    objectName: "BookFormatTextField"
                    label: "Format"
                    text: ctl.BookFormatTextField
                    rows: ctl.BookFormatList
                    onPicked: row => ctl.didSelectRow(BookForm.BookFormatPicker, row)
                }
            }
            RowLayout {
                spacing: 4
                PickerField {
                    objectName: "SeriesTextField"
                    label: "Series"
                    text: ctl.SeriesTextField
                    rows: ctl.ListOfSeries
                    onPicked: row => ctl.didSelectRow(BookForm.SeriesPicker, row)
                }
                ReferenceButton {
                    objectName: "SeriesReferenceListButton"
                    onClicked: ctl.openViewControllerBasedOnIdentifier("SeriesReferenceList")
                }
                FormField {
                    objectName: "SeriesNumberTextField"
                    Layout.fillWidth: false
                    Layout.preferredWidth: 70
                    label: "Series #"
                    checker: ctl
                    text: ctl.SeriesNumberTextField
                    onEdited: text => ctl.SeriesNumberTextField = text
                }
            }
            Label { text: "Notes"; color: Theme.muted; font.pixelSize: 13 }
            TextArea {
                objectName: "NotesTextView"
                Layout.fillWidth: true
                Layout.preferredHeight: 80
                wrapMode: TextEdit.Wrap
                text: ctl.NotesTextView
                onTextChanged: if (text !== ctl.NotesTextView) ctl.NotesTextView = text
                background: Rectangle { radius: 5; border.width: 1; border.color: "#8a817c"; color: "white" }
            }

            Rectangle {
                id: pinchView
                objectName: "pinchView"
                Layout.fillWidth: true
                Layout.preferredHeight: 220
                radius: 5
                border.width: 1
                border.color: "#8a817c"
                color: "white"
                clip: true
                CoverView {
                    objectName: "imageView"
                    anchors.fill: parent
                    anchors.margins: 6
                    image: ctl.imageView
                    scale: ctl.coverScale
                }
                Label {
                    anchors.centerIn: parent
                    visible: !ctl.hasImage
                    text: "No cover"
                    color: Theme.muted
                }
                PinchHandler {
                    target: null
                    property real last: 1
                    onActiveChanged: last = 1
                    onScaleChanged: {
                        ctl.pinchedView(scale / last)
                        last = scale
                    }
                }
                WheelHandler {
                    acceptedModifiers: Qt.ControlModifier
                    onWheel: event => ctl.pinchedView(event.angleDelta.y > 0 ? 1.1 : 1 / 1.1)
                }
            }
            RowLayout {
                spacing: 6
                CoverButton { objectName: "PasteButton"; text: "Paste"; iconName: "content_paste"; onClicked: ctl.PasteFromClipboard() }
                CoverButton { objectName: "PhotoLibraryButton"; text: "Folder"; iconName: "folder"; onClicked: ctl.photoFromLobrary() }
                CoverButton {
                    objectName: "CameraButton"
                    text: "Camera"
                    iconName: "photo_camera"
                    enabled: ctl.cameraEnabled
                    onClicked: ctl.OpenCameraButtonTapped()
                }
                CoverButton { objectName: "RemoveButton"; text: "Remove"; iconName: "delete"; onClicked: ctl.RemoveButtonTapped() }
                CoverButton {
                    objectName: "BarcodeButton"
                    text: "Scan"
                    iconName: "qr_code_scanner"
                    enabled: false // barcode capture comes with the ISBN search
                }
            }
        }
    }

    FileDialog {
        id: fileDialog
        title: "Choose a cover picture"
        nameFilters: ["Images (*.jpg *.jpeg *.png)", "All images (*.jpg *.jpeg *.png *.gif *.bmp *.webp *.tif *.tiff)", "All files (*)"]
        onAccepted: ctl.documentPicked(selectedFile)
    }

    Loader {
        id: camera
        active: false
        source: "../components/CameraCapture.qml"
        onLoaded: item.open()
        Connections {
            target: camera.item
            function onCaptured(image) { ctl.imagePicked(image) }
            function onClosed() { camera.active = false }
        }
    }

    AlertHost { controller: ctl }
}
