#pragma once

#include "TitleBar/TitleBar.h"
#include "skylume_global.h"

#include <QDialog>
#include <QPointer>

class QFrame;
class QRegion;

/// Kinds of dialogs. Other values behave like enWidgetNormal.
enum enWidgetType : int {
    enWidgetNormal = 0,
    enWidgetMessage = 4,      ///< centred whenever it is shown; as enWidgetFixed
    enWidgetFixed = 16,       ///< with the system's frame, as large as its main widget and not resizable
    enWidgetSystemFrame = 32, ///< always has the system's frame
};

/// A dialog in the application's own frame: a title bar, a border around one main widget, and rounded upper
/// corners. It centres itself over the window that it belongs to. If the main frame does not ask for such
/// frames, or the kind is enWidgetSystemFrame, it is an ordinary dialog with the system's frame. That is
/// decided once, in the constructor.
///
/// The operations that hide those of QDialog (setLayout, setWindowTitle, setWindowFlags) have to be called
/// through this class. GUI thread only.
class SKYLUME_EXPORT ExtendDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param parent owner of the dialog; may be null
    /// @param flags  Qt::WindowMinimizeButtonHint, Qt::WindowMaximizeButtonHint and Qt::WindowCloseButtonHint
    ///               choose the buttons of the title bar
    /// @param type   the kind of dialog
    ExtendDialog(QWidget* parent, Qt::WindowFlags flags, enWidgetType type);

    /// Sets the content, which becomes a child of the dialog and fills the space inside the frame.
    /// @param widget null for none. The previous one stays a child of the dialog but is no longer resized.
    void AddMainWidget(QWidget* widget);
    QWidget* GetMainWidget() const { return m_pMainWidget; } ///< null until one is added

    TitleBar* GetTileBar() const { return m_pTitleBar; } ///< null with the system's frame
    bool IsCusTitle() const { return m_bCusTitle; }      ///< whether the dialog draws its own frame

    /// Asks the main frame whether dialogs draw their own frame, and for the title height and border width.
    /// The constructor calls it; a later call does not change what kind of frame there is. Without a main
    /// frame nothing changes.
    void getFrameValue();

    /// Installs a layout that keeps to the space inside the frame. The dialog takes ownership; null is
    /// ignored.
    void setLayout(QLayout* layout);

    /// Sets the window's title and the text of the title bar.
    void setWindowTitle(QString const& title);

    /// Changes the window's flags and buttons. Unlike QWidget::setWindowFlags() it cannot remove a flag, except
    /// from dialogs of the kind enWidgetSystemFrame.
    ///
    /// - In the application's own frame, the title bar gets the buttons that the flags ask for, as in the
    ///   constructor. Of the flags only Qt::WindowStaysOnTopHint is added to the window (logged as a warning).
    /// - In the system's frame, the flags are added to those of the window. Qt::FramelessWindowHint and
    ///   Qt::CustomizeWindowHint are ignored.
    /// - The kind enWidgetSystemFrame gets exactly these flags.
    ///
    /// If the window's flags change, the dialog is hidden and has to be shown again.
    void setWindowFlags(Qt::WindowFlags flags);

    /// Creates the title bar if it is missing, and shows the buttons that the flags ask for, as in the
    /// constructor. For dialogs with the application's own frame.
    void setTtileBar(Qt::WindowFlags flags);

    /// Sets whether the user may close the dialog, by its button, Escape or Alt+F4. A call of close() works
    /// either way. Does nothing with the system's frame.
    void EnableCloseButton(bool isEnabled);

    /// Sets whether the dialog centres itself over its window whenever its size changes; it does at first.
    void SetCentreOnResize(bool centres) { m_bCentreOnResize = centres; }

    /// The minimum size of the main widget with the frame around it. The dialog may be made smaller, as a tile is.
    QSize minimumSizeHint() const override;

    /// The parts of the upper corners that lie outside their rounding.
    /// @param left, right receive them, in pixels and coordinates of the dialog
    void getCornerRegion(QRegion& left, QRegion& right) const;

    /// As getCornerRegion(), for any window of the given width in pixels.
    static void cornerRegions(int width, QRegion& left, QRegion& right);

public Q_SLOTS:
    /// Resizes the dialog so that its main widget gets this size, in pixels.
    void changeSize(QSize widgetSize);

Q_SIGNALS:
    /// The dialog is about to close.
    void dlgCloseEvent();

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitToMainWidget();
    QSize framed(const QSize& content) const;

    QFrame* m_pFrame = nullptr; ///< the background; null with the system's frame
    QPointer<TitleBar> m_pTitleBar;
    QPointer<QWidget> m_pMainWidget;
    enWidgetType m_enWidgetType;
    bool m_bCloseEnabled = true;
    bool m_bCusTitle = false;
    int m_iTitleHeight = 29; ///< in pixels
    int m_iFrameWidth = 3;   ///< in pixels
    bool m_bCentreOnResize = true;
};
