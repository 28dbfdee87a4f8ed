# Puts the installation together in game/; "make" calls it. .made/ remembers what has been made of which source.
set -eu
mkdir -p game .made

# what is not ours; of it, what our screens and our sound set-up no longer name
for program in vcc vcc.exe; do
  [ -e "$BASE/$program" ] || continue
  [ "$(cat .made/base 2>/dev/null)" = "$BASE" ] && [ -e "game/$program" ] &&
    [ ! "$BASE/$program" -nt .made/base ] && continue
  rm -rf .made && mkdir .made
  cp -R "$BASE/." game
  rm -f game/sounds/theme*.wav game/images/buttons.pcx game/images/previews.pcx
  printf '%s\n' "$BASE" >.made/base
done
: >.made/now

# note SOURCE NAME: game/NAME comes from here
note() {
  if grep -qxF -- "$2" .made/now; then
    echo "$1: game/$2 is made of another source, too" >&2
    exit 1
  fi
  printf '%s\n' "$2" >>.made/now
}

# is_made SOURCE NAME: of this source as it is
is_made() {
  [ -e "game/$2" ] && [ "$(cat ".made/of/$2" 2>/dev/null)" = "$1" ] &&
    [ ! "$1" -nt ".made/of/$2" ] && [ ! "$1" -ot ".made/of/$2" ]
}

# make_it SOURCE NAME COMMAND...: runs the command unless that is made
make_it() {
  note "$1" "$2"
  if is_made "$1" "$2"; then return; fi
  mkdir -p "$(dirname "game/$2")" "$(dirname ".made/of/$2")"
  source=$1 name=$2
  shift 2
  "$@"
  printf '%s\n' "$source" >".made/of/$name"
  touch -r "$source" ".made/of/$name"
}

# convert_all FOLDER PLACE ENDING
convert_all() {
  for file in "$1"/*; do
    [ -f "$file" ] || continue
    target=${file##*/}
    target=$2/${target%.*}.$3
    loop=
    case $target in sounds/theme*) loop=--loop ;; esac # it plays again and again
    make_it "$file" "$target" "$VCCKIT" convert ${loop:+"$loop"} "$file" -o "game/$target"
  done
}

for file in screens/*.toml; do
  [ -f "$file" ] || continue
  "$VCCKIT" pack screens/*.toml -o game >.made/packed
  sed -n 's,^wrote game/,,p' .made/packed | while IFS= read -r target; do note screens "$target"; done
  break
done

# as they are: tools/vcc.buf (which picture is in which buffer), tools/vcc.snd (sounds), settings, help pages
find files -type f | sed 's,^files/,,' | while IFS= read -r target; do
  make_it "files/$target" "$target" cp "files/$target" "game/$target"
done

if [ -f screens/factory.tw ]; then # text windows, for both languages
  for target in tools/language/english/e_factory.tw tools/language/german/g_factory.tw; do
    make_it screens/factory.tw "$target" cp screens/factory.tw "game/$target"
  done
fi

convert_all pictures images pcx
convert_all sounds sounds wav
convert_all films images avi

for file in modules/*.cpp modules/*.c; do
  [ -f "$file" ] || continue
  target=${file##*/}
  target=${target%.*}.so
  case $file in
    *.c) compiler=${CC:-cc} ;;
    *) compiler="${CXX:-c++} -std=c++17" ;;
  esac
  # shellcheck disable=SC2046,SC2086 # words of their own
  make_it "$file" "$target" $compiler -O2 -Wall -shared -fPIC "$file" -o "game/$target" \
    $(pkg-config --cflags --libs allegro)
done

# what is no longer here is the built-in one again, or gone
touch .made/before
grep -vxFf .made/now .made/before | while IFS= read -r target; do
  rm -f "game/$target" ".made/of/$target"
  if [ -e "$BASE/$target" ]; then cp "$BASE/$target" "game/$target"; fi
done
mv .made/now .made/before
