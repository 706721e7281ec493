// Entry points of the plug-in library.
