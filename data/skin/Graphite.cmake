# The colours of this skin in compact.qss.in.
set(DESCRIPTION "dark")
set(WINDOW "#23272d")
set(TEXT "#e8ebee")
set(SURFACE "#2e343b") # panels, fields, menus
set(QUIET_TEXT "#b2bac3")
set(ERROR_TEXT "#ff9d94")
set(HIGHLIGHT "#4c9be8") # the focus, what is selected, the primary button
set(HIGHLIGHTED_TEXT "#0f1216")
set(HIGHLIGHT_HOVER "#6bb0f2")
set(FOCUS_ON_COLOUR "#e8ebee") # the focus of a coloured button
set(BUTTON "#39414a")
set(HOVER "#454e59")
set(PRESSED "#525d69")
set(CLOSE_HOVER "rgba(210, 50, 45, 160)")
set(LINE "#48515c")
set(DISABLED_LINE "#39414a")
set(BOX_LINE "#8a95a1") # check boxes
set(CHECKED_BOX "#2f74b8")
