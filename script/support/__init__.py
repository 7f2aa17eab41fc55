"""What the scripts in this folder share."""
