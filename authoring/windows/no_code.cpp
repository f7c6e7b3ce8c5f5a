// XPWidgets_64.dll holds names alone.
