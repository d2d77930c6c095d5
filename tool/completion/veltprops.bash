# Completion of veltprops for bash. The program itself knows what can stand where: see "tool/Completion.h".

_veltprops() {
  # The line editor parts words at "=" and ":" too, so they are joined again.
  local rest=$COMP_LINE word words=() i
  for ((i = 0; i <= COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    if ((i > 0)) && [[ $rest != [[:space:]]* ]]; then
      words[${#words[@]} - 1]+=$word
    else
      rest=${rest#"${rest%%[![:space:]]*}"}
      words+=("$word")
    fi
    rest=${rest#"$word"}
  done

  # Without their quotes. What follows a quote is replaced as it stands, everything else is to be quoted.
  local typed=${words[-1]} quote= plain=()
  for word in "${words[@]:1}"; do
    case $word in
      [\"\']*) word=${word#?} word=${word%[\"\']} ;;
      *) word=$(sed 's/\\\(.\)/\1/g' <<<"$word") ;;
    esac
    plain+=("$word")
  done
  [[ $typed == [\"\']* ]] && quote=${typed:0:1}
  # What the line editor takes for done.
  local done_=
  if [[ ! $quote && $COMP_WORDBREAKS == *=* && $typed == *=* ]]; then done_=${typed%"${typed##*=}"}; fi

  local files candidate line
  COMPREPLY=()
  {
    read -r files
    while IFS= read -r line; do
      candidate=${line%%$'\t'*}
      [[ $quote ]] || candidate=$(printf %q "$candidate")
      COMPREPLY+=("${candidate#"$done_"}")
    done
  } < <("${words[0]}" complete "${plain[@]}" 2>/dev/null)
  [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null

  if [[ $files ]]; then
    compopt -o filenames 2>/dev/null
    [[ $files == "*" ]] && files=
    while IFS= read -r line; do
      # Folders, and files of that kind.
      if [[ -d $line || ${line,,} == *"$files" ]]; then COMPREPLY+=("$line"); fi
    done < <(compgen -f -- "${plain[-1]}")
  fi
}

complete -F _veltprops veltprops
