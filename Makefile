# Short names for the scripts.
.PHONY: build test bench format lint

build:
	scripts/setup && scripts/build release

test:
	scripts/test

bench:
	scripts/bench

format:
	scripts/format

lint:
	scripts/lint
