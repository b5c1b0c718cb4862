#!/usr/bin/env python3
"""What the weather example writes, against the schema of its vocabulary: check_weather.py QVPRES WEATHER_VIEW EXAMPLES"""

import copy
import json
import pathlib
import subprocess
import sys
import tempfile

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("the validator is missing: install the package python3-jsonschema")


def main(qvpres, weather_view, examples):
    vocabulary = f"{examples}/weather_view/weather.vocabulary.json"
    command = [qvpres, "vocabulary", "schema", vocabulary]
    schema = json.loads(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)
    with tempfile.TemporaryDirectory() as folder:
        data = f"{examples}/data/seattle-weather.csv"
        subprocess.run([weather_view, data, folder], check=True, stdout=subprocess.DEVNULL)
        view = json.loads(pathlib.Path(folder, "weather_view.json").read_text(encoding="utf-8"))
    validator = Draft202012Validator(schema)
    errors = [f"{error.json_path}: {error.message[:200]}" for error in validator.iter_errors(view)]
    print("\n".join(errors))

    # The schema knows the members: a column of the model does not belong into the style.
    wrong = copy.deepcopy(view)
    wrong["style"]["tempMax"] = wrong["dailyWeather"]["tempMax"]
    return 1 if errors or validator.is_valid(wrong) else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
