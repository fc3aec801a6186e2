import QtQuick

// A separator of one device pixel.
Rectangle {
    height: 1 / Screen.devicePixelRatio
    color: theme.colors.hairline
}
