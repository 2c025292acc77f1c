// The actions of the 3D view.

#pragma once

class QMenu;
class QToolBar;
class ZORHostView3D;

/// Adds Fit All (F), the standard views (1 to 7), Shaded (S) and Wireframe (W) to menu and tool bar. The keys
/// work in the whole window, whatever has the focus, but for fields in which one types. Object names: "_FitAllAction",
/// "_IsometricAction", "_FrontAction", "_BackAction", "_LeftAction", "_RightAction",
/// "_TopAction", "_BottomAction", "_ShadedAction", "_WireframeAction".
void ZORHostAddViewActions(ZORHostView3D* view, QMenu* menu, QToolBar* toolBar);
