"""Checks board descriptions and turns them into the binary that the host reads."""
