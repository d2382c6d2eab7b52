# Completion of admtemplate for bash.

# The keys of a template's values: of the words so far, the first that is a file.
_admtemplate_keys() {
  local word
  for word in "${COMP_WORDS[@]:2:COMP_CWORD-2}"; do
    [[ -f $word ]] || continue
    admtemplate repl "$word" <<<':keys' 2>/dev/null |
      sed -n 's/^values: *//p' | tr ',' '\n' | sed -n 's/^ *\[\(.*\)\]$/\1/p'
    return
  done
}

_admtemplate_queues() {
  admtemplate device 2>/dev/null | sed -n '/^Queues/,/^Name/s/^  \([^ ]*\) .*/\1/p'
}

_admtemplate() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
  local command=${COMP_WORDS[1]-} options=
  local IFS=$'\n'
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    COMPREPLY=($(compgen -W $'eval\ncheck\nrepl\ndevice\n--help' -- "$current"))
    return
  fi
  case $command in
    eval) options=$'--template\n--expression\n--service\n--device\n--input\n--plugin\n--format\n--strict\n--help' ;;
    check) options=$'--input\n--plugin\n--key\n--format\n--help' ;;
    repl) options=$'--service\n--device\n--input\n--plugin\n--strict\n--help' ;;
    device) options=$'--format\n--help' ;;
    *) return ;;
  esac
  case $previous in
    --template | --input | --plugin)
      COMPREPLY=($(compgen -f -- "$current"))
      return
      ;;
    --device)
      COMPREPLY=($(compgen -f -- "$current") $(compgen -W "$(_admtemplate_queues)" -- "$current"))
      return
      ;;
    --service)
      COMPREPLY=($(compgen -W $'DMFDeviceStatus\nDMFSuppliesStatus\nCapabilitiesInfoProvider' -- "$current"))
      return
      ;;
    --key)
      COMPREPLY=($(compgen -W "$(_admtemplate_keys)" -- "$current"))
      return
      ;;
    --expression) return ;;
    --format)
      local formats=$'text\njson\nplist'
      [[ $command == check ]] && formats=$'text\njson'
      [[ $command == device ]] && formats=$'text\nplist'
      COMPREPLY=($(compgen -W "$formats" -- "$current"))
      return
      ;;
  esac
  if [[ $current == -* ]]; then
    COMPREPLY=($(compgen -W "$options" -- "$current"))
    return
  fi
  COMPREPLY=($(compgen -f -- "$current"))
  case $command in
    eval) COMPREPLY+=($(compgen -W "$(_admtemplate_keys)" -- "$current")) ;;
    device) COMPREPLY+=($(compgen -W "$(_admtemplate_queues)" -- "$current")) ;;
  esac
}

complete -o filenames -F _admtemplate admtemplate
