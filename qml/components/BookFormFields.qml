import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Tomewise

// The book form's fields, cover and cover buttons, laid out once for the
// "Add Book" form and its twin, the detail screen.
Flickable {
    id: fields
    required property BookForm form
    property Component coverExtras: null
    // Only a page that answers "unwindFromScanner" offers the Scan button.
    property bool canScan: false

    objectName: "formFlickable"
    contentHeight: column.implicitHeight + 2 * Theme.margin
    clip: true
    ScrollIndicator.vertical: ScrollIndicator {}

    function focusTitle() {
        titleField.input.forceActiveFocus()
    }

    Connections {
        target: fields.form
        function onDocumentPickerRequested() { fileDialog.open() }
        function onCameraRequested() { camera.active = true }
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

    ColumnLayout {
        id: column
        x: Theme.margin
        y: Theme.margin
        width: fields.width - 2 * Theme.margin
        spacing: 8

        DateField {
            objectName: "dateTextField"
            label: "Date Read"
            form: fields.form
        }
        FormField {
            id: titleField
            objectName: "bookNameTextField"
            label: "Book Name"
            mandatory: true
            text: fields.form.bookNameTextField
            onEdited: text => fields.form.bookNameTextField = text
        }
        FormField {
            objectName: "SubTitleTextField"
            label: "Subtitle"
            text: fields.form.SubTitleTextField
            onEdited: text => fields.form.SubTitleTextField = text
        }
        FormField {
            objectName: "bookAuthorTextField"
            label: "Author"
            mandatory: true
            text: fields.form.bookAuthorTextField
            onEdited: text => fields.form.bookAuthorTextField = text
        }
        FormField {
            objectName: "publishersNameTextField"
            label: "Publisher"
            text: fields.form.publishersNameTextField
            onEdited: text => fields.form.publishersNameTextField = text
        }
        RowLayout {
            spacing: 8
            FormField {
                objectName: "datePublishedTextField"
                label: "Year Published"
                checker: fields.form
                text: fields.form.datePublishedTextField
                onEdited: text => fields.form.datePublishedTextField = text
            }
            FormField {
                objectName: "numberOfPagesTextField"
                label: "# Pages"
                checker: fields.form
                text: fields.form.numberOfPagesTextField
                onEdited: text => fields.form.numberOfPagesTextField = text
            }
        }
        FormField {
            objectName: "ISBNTextField"
            label: "ISBN"
            text: fields.form.ISBNTextField
            onEdited: text => fields.form.ISBNTextField = text
            onDoubleTapped: fields.form.ISBNDoubleTapped()
        }
        RowLayout {
            spacing: 4
            PickerField {
                objectName: "bookCategoryTextField"
                label: "Genre"
                text: fields.form.bookCategoryTextField
                rows: fields.form.ListOfGenre
                onPicked: row => fields.form.didSelectRow(BookForm.GenrePicker, row)
            }
            ReferenceButton {
                objectName: "GenreReferenceListButton"
                onClicked: fields.form.openViewControllerBasedOnIdentifier("GenreReferenceList")
            }
        }
        RowLayout {
            spacing: 8
            PickerField {
                objectName: "RatingTextField"
                label: "Rating"
                text: fields.form.RatingTextField
                rows: fields.form.ListOfRating
                onPicked: row => fields.form.didSelectRow(BookForm.RatingPicker, row)
            }
            PickerField {
                objectName: "BookFormatTextField"
                label: "Format"
                text: fields.form.BookFormatTextField
                rows: fields.form.BookFormatList
                onPicked: row => fields.form.didSelectRow(BookForm.BookFormatPicker, row)
            }
        }
        RowLayout {
            spacing: 4
            PickerField {
                objectName: "SeriesTextField"
                label: "Series"
                text: fields.form.SeriesTextField
                rows: fields.form.ListOfSeries
                onPicked: row => fields.form.didSelectRow(BookForm.SeriesPicker, row)
            }
            ReferenceButton {
                objectName: "SeriesReferenceListButton"
                onClicked: fields.form.openViewControllerBasedOnIdentifier("SeriesReferenceList")
            }
            FormField {
                objectName: "SeriesNumberTextField"
                Layout.fillWidth: false
                Layout.preferredWidth: 70
                label: "Series #"
                checker: fields.form
                text: fields.form.SeriesNumberTextField
                onEdited: text => fields.form.SeriesNumberTextField = text
            }
        }
        Label { text: "Notes"; color: Theme.muted; font.pixelSize: 13 }
        TextArea {
            objectName: "NotesTextView"
            Layout.fillWidth: true
            Layout.preferredHeight: 80
            wrapMode: TextEdit.Wrap
            text: fields.form.NotesTextView
            onTextChanged: if (text !== fields.form.NotesTextView) fields.form.NotesTextView = text
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
                image: fields.form.imageView
                scale: fields.form.coverScale
                transform: Translate { x: fields.form.coverOffset.x; y: fields.form.coverOffset.y }
            }
            Label {
                anchors.centerIn: parent
                visible: !fields.form.hasImage
                text: "No cover"
                color: Theme.muted
            }
            PinchHandler {
                target: null
                property real last: 1
                onActiveChanged: last = 1
                onScaleChanged: {
                    fields.form.pinchedView(scale / last)
                    last = scale
                }
            }
            WheelHandler {
                acceptedModifiers: Qt.ControlModifier
                onWheel: event => fields.form.pinchedView(event.angleDelta.y > 0 ? 1.1 : 1 / 1.1)
            }
            // A screen's own cover gestures and buttons, laid over the cover.
            Loader {
                anchors.fill: parent
                sourceComponent: fields.coverExtras
            }
        }
        RowLayout {
            spacing: 6
            CoverButton { objectName: "PasteButton"; text: "Paste"; iconName: "content_paste"; onClicked: fields.form.PasteFromClipboard() }
            CoverButton { objectName: "PhotoLibraryButton"; text: "Folder"; iconName: "folder"; onClicked: fields.form.photoFromLobrary() }
            CoverButton {
                objectName: "CameraButton"
                text: "Camera"
                iconName: "photo_camera"
                enabled: fields.form.cameraEnabled
                onClicked: fields.form.OpenCameraButtonTapped()
            }
            CoverButton { objectName: "RemoveButton"; text: "Remove"; iconName: "delete"; onClicked: fields.form.RemoveButtonTapped() }
            CoverButton {
                objectName: "BarcodeButton"
                text: "Scan"
                iconName: "qr_code_scanner"
                enabled: fields.canScan
                // The live camera when there is one, else reading a photo of the barcode.
                onClicked: fields.form.openViewControllerBasedOnIdentifier(fields.form.cameraEnabled ? "NewCapture" : "CaptureIOS16")
            }
        }
    }

    FileDialog {
        id: fileDialog
        objectName: "coverPicker"
        title: "Choose a cover picture"
        nameFilters: ["Pictures (*.jpg *.jpeg *.png)", "All files (*)"]
        onAccepted: fields.form.documentPicked(selectedFile)
    }

    Loader {
        id: camera
        active: false
        source: "CameraCapture.qml"
        onLoaded: item.open()
        Connections {
            target: camera.item
            function onCaptured(image) { fields.form.imagePicked(image) }
            function onClosed() { camera.active = false }
        }
    }
}
