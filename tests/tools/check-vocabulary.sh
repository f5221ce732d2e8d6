#!/usr/bin/env bash
# docs/vocabulary.md must match what the registries say now: regenerate it
# with `make docs` after adding classes or properties.
set -euo pipefail
preview=$1
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
fresh=$(mktemp)
trap 'rm -f "$fresh"' EXIT
"$source_dir/scripts/gen-vocabulary.sh" "$preview" "$fresh"
if ! diff -u "$source_dir/docs/vocabulary.md" "$fresh"; then
    echo "docs/vocabulary.md is out of date: run make docs" >&2
    exit 1
fi
