#pragma once

class QString;
class QToolButton;
struct Caption;

/// The path of a file in the folder of this plugin, such as a picture.
QString pluginFile(const QString& name);

/// Gives a button that shows only an icon its shortcut, and a name for screen readers and the tool tip.
void nameButton(QToolButton* button, const Caption& parts);
