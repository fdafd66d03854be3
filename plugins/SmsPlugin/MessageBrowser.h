#pragma once

class QTextBrowser;

/// Sets a browser up for messages. Links to web and mail addresses open outside the application.
void prepareBrowser(QTextBrowser* browser);

/// Sets the colour of the links in messages that are added later to one that is readable on the browser's background.
void colorLinks(QTextBrowser* browser);
