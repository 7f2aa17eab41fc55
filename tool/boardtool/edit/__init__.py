"""The page on which a board is described: its server. The page itself lies in tool/edit."""
