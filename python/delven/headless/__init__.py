"""The modules that Maya has, over the headless host."""
