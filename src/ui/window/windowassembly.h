// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QList>
#include <QPointer>
#include <QSizeF>
#include <QString>

#include <memory>

class QButtonGroup;
class QLineEdit;
class QPushButton;
class QSlider;
class QWebEngineView;
class PrivateView;
class QWidget;
class SettingsDialog;

// The settings window put together from its description: the dialog loaded with the project's
// own widgets in it, the controls found by object name, placeholders replaced by the real views,
// the keyboard order, and a size that fits the screen. Nothing here knows the position or the
// workspace.
namespace WindowAssembly {

// The controls of the window description, found by object name; any may be missing.
struct Outlets
{
    QPointer<QWidget> privateSettingView; // placeholder of the image choice
    QPointer<QWebEngineView> webView;
    QPointer<QWidget> positionDrawView; // placeholder of the canvas
    QPointer<QLineEdit> left;
    QPointer<QLineEdit> top;
    QPointer<QLineEdit> right;
    QPointer<QLineEdit> bottom;
    QPointer<QLineEdit> transparency;
    QPointer<QSlider> slider;
    QPointer<QButtonGroup> layers;
    QPointer<QPushButton> defaultButton;
    QPointer<QPushButton> cancelButton;
    QPointer<QPushButton> okButton;
};

// Loads the window description at path (a packager's link is followed, a FIFO never opened):
// its top-level dialog is a SettingsDialog, so that the close box reaches the controller, and
// its web view a real one. Null, with the reason in *error, when there is no dialog in it.
std::unique_ptr<SettingsDialog> loadWindow(const QString &path, QString *error);

// The image choice from its own description at path: the description's top-level widget when
// it is the image choice, else the last image choice in it. Null when there is none.
PrivateView *loadImageChoice(const QString &path);

// Finds the controls of window; each layer button gets the layer its "layer" property carries
// as its id in the group.
Outlets findOutlets(QWidget *window);

// The language of the window, from the language folder its description came from ("zh_CN.lproj"
// gives "zh_CN"); English where the folder names none.
QString languageOf(const QString &descriptionPath);
// As a BCP 47 tag, for the preview page: "zh_CN" gives "zh-CN".
QString languageTagOf(const QString &descriptionPath);

// Takes a placeholder's place, size rules, tooltip and position in its layout, then deletes it.
void replacePlaceholder(QWidget *placeholder, QWidget *view);

// The canvas in a box that keeps the page's proportions, in the placeholder's place (or simply
// in the window when it has none).
void placeCanvas(QWidget *window, QWidget *placeholder, QWidget *canvas, QSizeF proportions);

// Tab moves in reading order: canvas, margins, transparency, layer, image, Default, OK, Cancel.
// The preview is looked at, not worked, and stays out of the chain. The layer label's mnemonic,
// like Tab, goes to the layer button that is chosen and never chooses one itself.
void arrangeKeyboardOrder(QWidget *window, const Outlets &outlets, QWidget *canvas,
                          QWidget *imageChoice);

// The settings column scrolls on a short screen rather than squeezing its controls, and is
// never narrower than they are; the window opens at its description's size where the screen has
// room, smaller where it has not.
void fitToScreen(QWidget *window);

} // namespace WindowAssembly
