// replaced by the main window
