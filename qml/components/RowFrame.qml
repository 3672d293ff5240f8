import QtQuick

// The frame every list row shares.
Rectangle {
    radius: Theme.rowRadius
    border.width: Theme.rowBorder
    border.color: "black"
    color: Theme.rowBackground
}
