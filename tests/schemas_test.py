"""What the program prints as JSON and SARIF is what the schemas say.

    python3 tests/schemas_test.py ROOT KRPRE

The schema of SARIF is the published one, in tests/cli/.
"""
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import jsonschema

ROOT, PROGRAM = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
# One of each name, so that their outputs do not meet.
FAILING = {path.stem: str(path) for path in sorted(ROOT.glob("tests/corpus/*/*.prw"))
           if path.with_suffix(".err").exists()}.values()


def validator(path: Path) -> jsonschema.protocols.Validator:
    schema = json.loads(path.read_text())
    kind = jsonschema.validators.validator_for(schema)
    kind.check_schema(schema)
    return kind(schema)


OURS = validator(ROOT / "docs/krpre.schema.json")
SARIF = validator(ROOT / "tests/cli/sarif-2.1.0-rtm.4.json")


def run(*arguments: str) -> str:
    with tempfile.TemporaryDirectory() as out:
        command = [PROGRAM, *arguments, "-o", out, *FAILING]
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False).stdout.decode()


class Schemas(unittest.TestCase):
    def test_every_record_of_a_failing_source_is_valid(self) -> None:
        records = [json.loads(line) for line in run("--diagnostics=json", "-T").splitlines()]
        for record in records:
            OURS.validate(record)
        self.assertEqual({record["severity"] for record in records}, {"error", "trace", "result"})
        for part in ("notes", "rules", "includedFrom", "endColumn"):
            self.assertTrue(any(record.get(part) for record in records), f"none has {part}")

    def test_every_record_of_the_sessions_is_valid(self) -> None:
        lines = [line for path in ROOT.glob("tests/cli/sessions/*.txt")
                 for line in path.read_text().splitlines() if line.startswith('{"file"')]
        self.assertGreater(len(lines), 5)
        for line in lines:
            OURS.validate(json.loads(line))

    def test_answers_are_valid(self) -> None:
        example = ROOT / "examples/orders/orders.prw"
        for arguments in (["explain", f"{example}:65"], ["rules", str(example)]):
            answer = subprocess.run([PROGRAM, *arguments, "--json"], stdout=subprocess.PIPE, check=True)
            OURS.validate(json.loads(answer.stdout))

    def test_the_schema_refuses_what_is_wrong(self) -> None:
        record = json.loads(run("--diagnostics=json").splitlines()[0])
        for change in ({"severity": "bad"}, {"line": -1}, {"unknown": 1}, {"notes": [{}]}):
            self.assertFalse(OURS.is_valid(record | change), change)

    def test_sarif_is_valid_and_complete(self) -> None:
        document = json.loads(run("--diagnostics=sarif"))
        SARIF.validate(document)
        (only,) = document["runs"]
        self.assertFalse(only["invocations"][0]["executionSuccessful"])
        errors = run("--diagnostics=gcc").count(": error: ")
        self.assertEqual(len(only["results"]), errors)
        slugs = [rule["id"] for rule in only["tool"]["driver"]["rules"]]
        self.assertEqual(len(slugs), len(set(slugs)))
        for result in only["results"]:
            self.assertEqual(slugs[result["ruleIndex"]], result["ruleId"])
        for part in ("relatedLocations", "codeFlows"):
            self.assertTrue(any(part in result for result in only["results"]), f"none has {part}")


unittest.main(argv=sys.argv[:1])
