#!/usr/bin/env python3
"""Checks the schemas with a validator of JSON Schema 2020-12.

check_schemas.py SCHEMA_SAMPLES DATA DECLARATION_SCHEMA [DECLARATION...]

The texts that the program SCHEMA_SAMPLES writes must be valid. Of DATA/wrong-texts.json and
DATA/wrong-declarations.json, all must be refused but those marked "beyond". DATA/every-type.json and the DECLARATIONs
must be valid; of a document in Markdown, the first block of JSON.
"""

import json
import pathlib
import subprocess
import sys

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("the validator is missing: install the package python3-jsonschema")

failures = []


def check(condition, message):
    if not condition:
        failures.append(message)


def first_error(validator, value):
    return next((error.message for error in validator.iter_errors(value)), None)


def validator_of(schema, name):
    Draft202012Validator.check_schema(schema)
    check(schema["$schema"] == "https://json-schema.org/draft/2020-12/schema", f"{name}: no draft 2020-12")
    return Draft202012Validator(schema)


def check_samples(samples, wrong):
    count = 0
    names_seen = set()
    for entry in samples:
        name = f"{entry['namespace']} short={entry['short']} packed={entry['packed']}"
        validator = validator_of(entry["schema"], name)
        for text in entry["texts"]:
            value = json.loads(text)
            names_seen.update(value)
            error = first_error(validator, value)
            check(error is None, f"{name}: {text[:300]}: {error}")
            count += 1
    check(count == 1200, f"{count} texts instead of 1200")
    validators = {
        (e["short"], e["packed"]): Draft202012Validator(e["schema"]) for e in samples if e["namespace"] == "every-type"
    }
    for case in wrong:
        validator = validators[case.get("short", False), case.get("packed", False)]
        refused = first_error(validator, case["text"]) is not None
        check(refused != case.get("beyond", False), f"{case['why']}: refused: {refused}")
    return count, len(wrong), names_seen


def declaration_of(file):
    text = pathlib.Path(file).read_text(encoding="utf-8")
    if file.endswith(".md"):
        text = text.partition("```json\n")[2].partition("```")[0]
    return json.loads(text)


def check_declarations(schema, files, wrong):
    validator = validator_of(schema, "declarations")
    for file in files:
        error = first_error(validator, declaration_of(file))
        check(error is None, f"{file}: {error}")
    for case in wrong:
        declaration = case.get("declaration")
        if declaration is None:
            declaration = {"namespaces": [{"name": "v", "firstId": 0, "lastId": 9, "parameters": [case["parameter"]]}]}
        refused = first_error(validator, declaration) is not None
        check(refused != case.get("beyond", False), f"declaration, {case['why']}: refused: {refused}")
    return len(wrong)


def main(program, data, schema, *declarations):
    def load(path):
        return json.loads(pathlib.Path(path).read_text(encoding="utf-8"))

    every_type = f"{data}/every-type.json"
    samples = json.loads(subprocess.run([program, every_type], check=True, stdout=subprocess.PIPE).stdout)
    texts, wrong, names = check_samples(samples, load(f"{data}/wrong-texts.json")["texts"])
    check(len(names) > 300, f"only {len(names)} names in the samples")
    wrong_declarations = check_declarations(load(schema), (every_type, *declarations), load(f"{data}/wrong-declarations.json"))
    for failure in failures:
        print(failure)
    print(f"{texts} texts, {wrong} wrong ones, {len(declarations) + 1} declarations, {wrong_declarations} wrong ones")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
