#pragma once

#include "Tour.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "forms/TreeView.h"

class QMenu;

namespace qinghe {

class MDIFrmMAIN;

// What a user's hands do: mouse, keys, menus.

MDIFrmMAIN& frame();
/// The window of that name if it is on the screen, else null.
QWidget* window(const QString& name);

void click(QWidget* widget);
/// A command of the main window, by its name.
void choose(const QString& command);
void pressKey(Toolbar& bar, const QString& key);
void clickRow(ListView& list, int row, int column = 0, Qt::MouseButton button = Qt::LeftButton);
void doubleClickRow(ListView& list, int row);
/// Types over all that the box holds.
void typeInto(TextBox& box, const QString& text);
/// Types where the focus is.
void typeText(const QString& text);
/// Types over a cell, whose input a click has to open, and leaves it by Enter.
void typeIntoCell(ListView& list, int row, int column, const QString& text);
void clickNode(TreeView& tree, const TreeNode* node);
/// An entry of a popped-up menu, which closes.
void chooseEntry(QMenu& menu, const QString& entry);
/// Prints the report that is on the screen to PDF.
void printPdf(const QString& report);
void leaveProgram();

template <class F>
bool isShown() {
  return isLoaded<F>() && defaultInstance<F>().isVisible();
}

/// Whether the user is in, with nothing before the main window.
bool isLoggedIn();

/// Keeps the splash and each notice, which go by themselves, until a step has seen them: on a busy
/// machine that may be late.
void keepPassingWindows(MDIFrmMAIN& frame);
/// The splash. The path of what is saved begins with `files`.
QList<TourStep> startSteps(const QString& files);
/// Login and notice, up to the bare main window.
QList<TourStep> logInSteps(const QString& user, const QString& password);

}  // namespace qinghe
