"""Checks that JSON documents fit a JSON Schema: check_schema.py SCHEMA DOCUMENT... Prints where one does not."""

import json
import sys
from pathlib import Path

from jsonschema import Draft202012Validator

schema = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
Draft202012Validator.check_schema(schema)
validator = Draft202012Validator(schema)
errors = [(name, error) for name in sys.argv[2:]
          for error in validator.iter_errors(json.loads(Path(name).read_text(encoding="utf-8")))]
for name, error in errors:
    print(f"{name}: {error.json_path}: {error.message}")
sys.exit(bool(errors))
