// Has a compiled form of what every test includes made; nothing of its own.
