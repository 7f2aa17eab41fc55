"""The setup's pages, made of the board's description: questions, texts, glyphs, and the files."""
