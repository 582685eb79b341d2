// A tool server started, asked what it can do, and used.
//
//   vorc -morv -morvquiet use_tool.c

int main()
{
  int tides; int hour;
  tides = morv_mcp_connect("python3 tools.py");
  if (tides == 0) morv_exit(1);
  $tools = morv_mcp_list_tools(tides);
  printf("%s: %s\n", morv_json_get($tools, "result.tools.0.name"),
         morv_json_get($tools, "result.tools.0.description"));
  for (hour = 6; hour <= 12; hour = hour + 3)
    printf("at %d: %s\n", hour, morv_mcp_call(tides, "tide", isprint("{'hour':", hour, "}")));
  $answer = morv_mcp_call(tides, "storm", "{}");
  printf("another tool: %s\n", morv_json_get($answer, "error.message"));
  morv_mcp_disconnect(tides);
  return 0;
}
