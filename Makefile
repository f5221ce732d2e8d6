# Convenience targets; see README.md.
BUILD_DIR      ?= build
ASAN_BUILD_DIR ?= build-asan
JOBS           ?= 2
CMAKE_FLAGS    ?=
GENERATOR      := $(shell command -v ninja >/dev/null 2>&1 && echo "-G Ninja")

.PHONY: all deps build build-asan test test-plain test-asan demo bench install clean docs

all: build

deps:
	@scripts/install-deps.sh

$(BUILD_DIR)/CMakeCache.txt:
	cmake -S . -B $(BUILD_DIR) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

$(ASAN_BUILD_DIR)/CMakeCache.txt:
	cmake -S . -B $(ASAN_BUILD_DIR) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZKIT_SANITIZE=ON \
	      -DZKIT_BUILD_EXAMPLES=OFF -DZKIT_BUILD_TOOLS=OFF $(CMAKE_FLAGS)

build: deps $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j$(JOBS)

build-asan: deps $(ASAN_BUILD_DIR)/CMakeCache.txt
	cmake --build $(ASAN_BUILD_DIR) -j$(JOBS)

test-plain: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j$(JOBS)

test-asan: build-asan
	ctest --test-dir $(ASAN_BUILD_DIR) --output-on-failure -j$(JOBS)

# The whole suite, once plain and once under ASan + UBSan.
test: test-plain test-asan

demo: build
	$(BUILD_DIR)/examples/gallery/zkit-gallery

bench: deps $(BUILD_DIR)/CMakeCache.txt
	cmake -S . -B $(BUILD_DIR) -DZKIT_BUILD_BENCH=ON
	cmake --build $(BUILD_DIR) -j$(JOBS)
	@for b in $(BUILD_DIR)/bench/zkit-bench-*; do \
	    [ -f "$$b" ] && [ -x "$$b" ] || continue; \
	    echo "== $$(basename $$b)"; QT_QPA_PLATFORM=offscreen $$b || exit 1; \
	done

install: build
	cmake --install $(BUILD_DIR) $(if $(PREFIX),--prefix $(PREFIX))

clean:
	rm -rf $(BUILD_DIR) $(ASAN_BUILD_DIR)

# The generated parts of the documentation: the vocabulary reference and the
# gallery screenshot.
docs: build
	scripts/gen-vocabulary.sh $(BUILD_DIR)/tools/preview/zkit-preview docs/vocabulary.md
	QT_QPA_PLATFORM=offscreen $(BUILD_DIR)/examples/gallery/zkit-gallery --screenshot docs/gallery.png
