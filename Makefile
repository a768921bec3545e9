# The commands a person needs; scripts/ does the work. `make run ARGS="~/a ~/b"` opens two folders.
PREFIX ?= /usr/local
DESTDIR ?=
ARGS ?=
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 600
HAS_DISPLAY := $(DISPLAY)$(WAYLAND_DISPLAY)

.PHONY: run build test stress sanitizers fuzz bench lint release deb check-package install clean

run:
	@scripts/install-deps run $(if $(HAS_DISPLAY),,tour)
	cmake --preset debug
	cmake --build build --parallel $(JOBS) --target twinleaf
	@exec $(if $(HAS_DISPLAY),build/twinleaf $(ARGS),scripts/tour build/twinleaf build/tour)

build:
	@scripts/install-deps test
	cmake --preset debug
	cmake --build build --parallel $(JOBS)

test: build
	ctest --test-dir build --output-on-failure --parallel $(JOBS) --no-tests=error

# `make stress SEED=1234` repeats the four runs of one seed.
stress:
	@scripts/install-deps test
	cmake --preset debug
	cmake --build build --parallel $(JOBS) --target tst_NothingIsLost
	scripts/stress build $(JOBS) $(SEED)

# halt_on_error for both; leaks are left out, the font and theme libraries keep what they once loaded.
sanitizers:
	@scripts/install-deps test
	cmake --preset sanitizers
	cmake --build build-sanitizers --parallel $(JOBS)
	ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	    ctest --test-dir build-sanitizers --output-on-failure --parallel $(JOBS) --no-tests=error

# Every reader of bytes from outside, each for so many seconds; findings stay in build-fuzz/findings.
fuzz:
	@scripts/install-deps run fuzz
	cmake --preset fuzz
	cmake --build build-fuzz --parallel $(JOBS) --target fuzz
	scripts/fuzz build-fuzz $(FUZZ_SECONDS) $(JOBS)

bench:
	@scripts/install-deps bench
	cmake --preset release
	cmake --build build-release --parallel $(JOBS)
	scripts/bench build-release

lint:
	@scripts/install-deps lint
	cmake --preset debug
	scripts/lint build

release:
	@scripts/install-deps run
	cmake --preset release -DTWINLEAF_BENCHMARKS=OFF
	cmake --build build-release --parallel $(JOBS) --target twinleaf

# build-deb/twinleaf_VERSION_ARCHITECTURE.deb, for this Debian.
deb:
	@scripts/install-deps run deb
	@scripts/package $(JOBS)

# Installs it in a bare Debian 12 of its own, drives it there and removes it; for root alone.
check-package: deb
	@scripts/install-deps run bare
	scripts/check-package build-deb/twinleaf_*.deb

# Only copies, so that root need not build: `make release`, then `sudo make install`.
install:
	@test -x build-release/twinleaf || { echo "install: run 'make release' first" >&2; exit 1; }
	DESTDIR="$(DESTDIR)" cmake --install build-release --prefix "$(PREFIX)"
	@if [ -n "$(DESTDIR)" ] || [ "$$(id -u)" = 0 ]; then \
	    DESTDIR="$(DESTDIR)" cmake --install build-release --component rights; \
	else \
	    echo "install: what changes other people's files is left out: only root can install it" >&2; \
	fi

clean:
	rm -rf build build-release build-sanitizers build-fuzz build-deb
