" Vim syntax file: scripts for morv and vorc. Made by scripts/editors.py from the tables of the language.
if exists("b:current_syntax") | finish | endif

syn keyword morvConditional if else switch case default
syn keyword morvRepeat for while do
syn keyword morvStatement return break continue goto try catch throw
syn keyword morvType void char short int long float double longdouble bool unsigned wchar_t struct class union
syn keyword morvType enum typedef function subroutine IOBJECT BIT UCHAR INT4 INT8 INT16 INT32 INT64 INT128
syn keyword morvType INT256 UINT4 UINT8 UINT16 UINT32 UINT64 UINT128 UINT256
syn keyword morvStorageClass static extern const volatile register auto inline virtual friend public private
syn keyword morvStorageClass protected
syn keyword morvBoolean true false
syn keyword morvKeyword sizeof operator new delete this namespace using template cin cout rtlbegin rtlend
syn keyword morvFunction printf malloc iprint morv_getparam morv_sql_connect morv_sql_connect_remote
syn keyword morvFunction morv_sql_query morv_sql_next morv_sql_get morv_sql_count morv_sql_free
syn keyword morvFunction morv_sql_disconnect morv_sql_status morv_file_size morv_file_hash morv_concat
syn keyword morvFunction morv_file_fingerprint morv_fingerprint_similarity morv_image_phash
syn keyword morvFunction morv_phash_similarity morv_re morv_ocr_extract morv_image_crop morv_fingerprint_match
syn keyword morvFunction tensor_new tensor_init_spread tensor_get tensor_set tensor_matmul tensor_add
syn keyword morvFunction tensor_relu tensor_softmax tensor_rows tensor_cols tensor_free tensor_sub
syn keyword morvFunction tensor_scale tensor_transpose tensor_linear tensor_layernorm tensor_embedding_lookup
syn keyword morvFunction tensor_causal_mask tensor_positional_encoding tensor_multihead_attention
syn keyword morvFunction tensor_self_attention tensor_cross_attention tensor_tokenize tensor_detokenize
syn keyword morvFunction tensor_cross_entropy_loss tensor_relu_backward tensor_softmax_backward
syn keyword morvFunction tensor_layernorm_backward_x tensor_layernorm_backward_gamma
syn keyword morvFunction tensor_layernorm_backward_beta tensor_embedding_lookup_backward tensor_sgd_step
syn keyword morvFunction tensor_cross_entropy_loss_backward tensor_argmax morv_mcp_connect morv_mcp_list_tools
syn keyword morvFunction morv_mcp_call morv_mcp_disconnect morv_json_get morv_strcmp morv_strstr
syn keyword morvFunction morv_search_txt morv_sha256 morv_sha256_base64 morv_base64 morv_unbase64 morv_script
syn keyword morvFunction morv_script_src morv_script_srcs morv_hmac_sha256 morv_pbkdf2 morv_random_hex
syn keyword morvFunction morv_qrcode_svg morv_barcode_svg morv_qrcode_read morv_barcode_read morv_barcode_kind
syn keyword morvFunction morv_encrypt morv_decrypt morv_base64_encode morv_base64_decode morv_https_post
syn keyword morvFunction morv_https_get morv_https_status morv_lang_open morv_lang_run morv_lang_get
syn keyword morvFunction morv_lang_getnum morv_lang_set morv_lang_names morv_lang_has morv_lang_kind
syn keyword morvFunction morv_lang_limit morv_lang_close morv_strlen morv_starts_with morv_ends_with
syn keyword morvFunction morv_file_read morv_file_contains morv_file_diff ifprint isprint morv_openai_chat
syn keyword morvFunction morv_file_line morv_file_lines morv_text_embed tensor_cosine tensor_save tensor_load
syn keyword morvFunction morv_img_new morv_img_set morv_img_get morv_img_line morv_img_rect morv_img_fill_rect
syn keyword morvFunction morv_img_save_png morv_img_free morv_afis_extract morv_afis_minutiae morv_afis_match
syn keyword morvFunction morv_afis_free morv_afis_match_files icat ihead itail igrep igrep_count icut ils
syn keyword morvFunction ifind ireplace ibash imake ikill irunning ithread_create ithread_join ithread_barrier
syn keyword morvFunction ithread_affinity_set CPU_ZERO CPU_SET icpu_count isleep ised ised_file morv_exec
syn keyword morvFunction morv_exec_capture morv_exec_to_file morv_exec_status morv_assert morv_assert_eq_int
syn keyword morvFunction morv_assert_eq_str morv_test_summary morv_exit morv_list_new morv_list_add
syn keyword morvFunction morv_list_get morv_list_count morv_list_sort morv_list_free morv_split morv_join
syn keyword morvFunction morv_map_new morv_map_set morv_map_get morv_map_has morv_map_count morv_map_keys
syn keyword morvFunction morv_map_free morv_set_new morv_set_add morv_set_has morv_set_count morv_set_remove
syn keyword morvFunction morv_set_items morv_set_free morv_tuple_new morv_tuple_add morv_tuple_get
syn keyword morvFunction morv_tuple_count morv_tuple_free morv_lib_field morv_lib_version morv_version_cmp
syn keyword morvFunction morv_hex morv_parse_hex morv_atoi morv_bits morv_bin morv_substr morv_html_escape
syn keyword morvFunction morv_upper morv_lower morv_trim morv_replace_all morv_file_exists morv_file_mtime
syn keyword morvFunction morv_mkdir morv_remove morv_rename morv_cwd morv_chdir morv_glob morv_glob_r
syn keyword morvFunction morv_file_write morv_file_replace morv_bin_read morv_bin_size morv_bin_get
syn keyword morvFunction morv_bin_int32 morv_bin_find morv_bin_free morv_bin_float python pscript java jscript
syn keyword morvFunction morv_map_delete morv_fopen morv_fgets morv_feof morv_fclose morv_getenv morv_setenv
syn keyword morvFunction morv_time morv_date_string morv_elapsed_ms ifopen ifclose ifgets ifeof ifile_read
syn keyword morvFunction ifile_write ifile_exists ifile_size ifile_mtime ifile_line ifile_lines ifile_contains
syn keyword morvFunction ifile_replace ifile_diff ifile_hash ifile_fingerprint iglob iglob_r imkdir ichdir
syn keyword morvFunction icwd iremove irename igetenv isetenv morv_dict_new morv_dict_set morv_dict_get
syn keyword morvFunction morv_dict_has morv_dict_count morv_dict_keys morv_dict_free morv_dict_delete
syn match morvDollar "\$\h\w*"
syn match morvNumber "\<\(0x\x\+\|\d\+\.\d\+f\=\|\d\+\)[uUlL]\=\>"
syn match morvEscape contained "\\."
syn match morvFormat contained "%[-+ #0]*[0-9*]*\(\.[0-9*]*\)\=[hlLqjzt]*[aAeEfFgGxXoucdips%]"
syn region morvString start=+"+ skip=+\\.+ end=+"+ oneline contains=morvEscape,morvFormat,@Spell
syn match morvCharacter "'\(\\.[0-9a-fA-F]*\|[^'\\]\)'"
syn match morvComment "//.*$" contains=morvTodo,@Spell
syn region morvComment start="/\*" end="\*/" contains=morvTodo,@Spell
syn keyword morvTodo contained TODO FIXME XXX NOTE
syn match morvPreProc "^\s*#\s*\(define\|undef\|ifdef\|ifndef\|if\|elif\|else\|endif\|include\|line\)\>"
syn match morvPreProc "\%^#!.*$"
syn sync ccomment morvComment

hi def link morvBoolean Boolean
hi def link morvCharacter Character
hi def link morvComment Comment
hi def link morvConditional Conditional
hi def link morvDollar Identifier
hi def link morvEscape SpecialChar
hi def link morvFormat Special
hi def link morvFunction Function
hi def link morvKeyword Keyword
hi def link morvNumber Number
hi def link morvPreProc PreProc
hi def link morvRepeat Repeat
hi def link morvStatement Statement
hi def link morvStorageClass StorageClass
hi def link morvString String
hi def link morvTodo Todo
hi def link morvType Type

let b:current_syntax = "morv"
