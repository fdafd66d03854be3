# The colours of this skin in compact.qss.in.
set(DESCRIPTION "light, blue")
set(WINDOW "#e4eef9")
set(TEXT "#12304f")
set(SURFACE "#f8fbff") # panels, fields, menus
set(QUIET_TEXT "#46637f")
set(ERROR_TEXT "#a8231b")
set(HIGHLIGHT "#1f6fc4") # the focus, what is selected, the primary button
set(HIGHLIGHTED_TEXT "#ffffff")
set(HIGHLIGHT_HOVER "#1a62ae")
set(FOCUS_ON_COLOUR "#0f2338") # the focus of a coloured button
set(BUTTON "#f8fbff")
set(HOVER "#d3e4f6")
set(PRESSED "#b9d4ef")
set(CLOSE_HOVER "rgba(210, 50, 45, 140)")
set(LINE "#b4cbe4")
set(DISABLED_LINE "#d3e4f6")
set(BOX_LINE "#6587ab") # check boxes
set(CHECKED_BOX "#1f6fc4")
