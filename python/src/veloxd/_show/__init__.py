"""How things are shown: as texts, as tables and small pictures, and drawn by matplotlib."""
