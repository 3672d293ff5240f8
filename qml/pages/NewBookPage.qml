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
    unwindTargets: ["unwindFromScanner"]
    onUnwound: name => ctl.unwindFromScanner()

    NewBookViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
        onUnwind: name => page.unwind(name)
        onNotice: text => page.showNotice(text)
    }
    Component.onCompleted: ctl.viewDidLoad()
    StackView.onActivating: ctl.viewWillAppear()
    // The title is typed first; coming back from a reference list keeps the focus where it was.
    property bool titleFocused: false
    StackView.onActivated: {
        if (!titleFocused) {
            titleFocused = true
            formFields.focusTitle()
        }
    }

    Shortcut {
        sequences: [StandardKey.Save]
        enabled: page.StackView.status === StackView.Active
        onActivated: ctl.SaveNewBook()
    }

    barActions: Component {
        ToolButton {
            objectName: "saveButton"
            text: "Save"
            font.bold: true
            Material.foreground: "white"
            onClicked: ctl.SaveNewBook()
        }
    }

    BookFormFields {
        id: formFields
        anchors.fill: parent
        form: ctl
        canScan: true
    }

    AlertHost { controller: ctl }
}
